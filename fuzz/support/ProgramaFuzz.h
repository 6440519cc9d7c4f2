#pragma once

#include "context/Servidor.h"
#include "emission/LeituraChave.h"
#include "support/AmbienteVirtual.h"

#include <QByteArrayView>
#include <QTemporaryDir>
#include <functional>
#include <memory>

namespace nfce::teste {

// Each target defines it: the check of one input, which libFuzzer's entry point hands over.
void Alvo(QByteArrayView bytes);

// The sale every answer is about: cupom 77, NFC-e 1234 of the sample company, items 1 to 3; its
// key as the panel holds it while the lot and protocol answers are read.
inline constexpr qint32 CupomFuzz = 77;
inline constexpr qint32 NfceFuzz = 1234;
inline const QString CnpjFuzz = QStringLiteral("11222333000181");
inline const QString ChaveFuzz = QStringLiteral("31261111222333000181650010000012349000012344");

// One program folder per fuzzing process: the sample shop on SQLite (ENVIOXML on, an
// accountant's folder), the sale with its items and quote, a server on the virtual clock.
class ProgramaFuzz {
public:
    static ProgramaFuzz& Instancia();

    // Before each input, so that an input fails alone as it failed in a run: the rows, the
    // server's state and the exchange folders as at the start; the authorised XML of the key
    // in its month folder with `autorizado`.
    void NovaEntrada(bool autorizado);
    // The bytes as a file below the company folder.
    void Escreve(const QString& relativo, QByteArrayView dados) const;
    // Runs a reader; aborts on any error (above all a statement the database refused) and on a
    // sale row that another statement touched or that would not fit the shop's MariaDB columns.
    void Roda(const std::function<void(Servidor&)>& leitor);

private:
    ProgramaFuzz();
    QString Texto(const QString& sql);
    QString Empresa(const QString& relativo) const;

    QTemporaryDir dir_;
    AmbienteVirtual ambiente_;
    std::unique_ptr<Servidor> servidor_;
};

// The lot and protocol answers in one input: the bytes up to the first NUL are
// "<key>-num-lot.txt", the rest the answer of lot 54; without a NUL the lot file is "54;".
struct ParDeArquivos {
    QByteArrayView lote, resposta;
};
ParDeArquivos DivideNoNulo(QByteArrayView bytes);

// A key a reader took must be none, UniNFe's "0", or 44 digits with a valid check digit; a key
// an answer carried, when the reader took it (not blank, not refused).
void ConfereChave(const QString& chave);
void ConfereChaveLida(const ChaveLida& lida);
// Aborts when `texto` holds a line end.
void ConfereLinha(const QString& texto, const char* oQue);
// Prints the reason and aborts, so that libFuzzer keeps the input.
[[noreturn]] void Falha(const QString& motivo);

} // namespace nfce::teste
