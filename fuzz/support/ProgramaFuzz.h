#pragma once

#include "context/Servidor.h"
#include "emission/LeituraChave.h"
#include "support/AmbienteVirtual.h"

#include <QByteArrayView>
#include <QTemporaryDir>
#include <functional>
#include <memory>

namespace nfce::teste {

// The sale every answer is about: cupom 77, NFC-e 1234 of the sample company, items 1 to 3.
inline constexpr qint32 CupomFuzz = 77;
inline constexpr qint32 NfceFuzz = 1234;
// Its key, as the panel holds it while the lot and protocol answers are read, and its company.
QString ChaveFuzz();
QString CnpjFuzz();

// One program folder per fuzzing process, made at the first input: the sample shop on
// SQLite (ENVIOXML on, an accountant's folder), the sale with its items and its quote, and
// a server on the virtual clock, so the readers' waits cost nothing.
class ProgramaFuzz {
public:
    static ProgramaFuzz& Instancia();

    // Before each input: the sale rows, the server's state and the exchange folders as at the
    // start, so that an input that fails here fails the same way when run alone. With
    // `autorizado` the authorised XML of the key lies in its month folder.
    Servidor& NovaEntrada(bool autorizado);
    // The bytes as a file below the company folder (`relativo` with "/").
    void Escreve(const QString& relativo, QByteArrayView dados) const;

    // Runs a reader. Any error aborts (above all a statement the database refused), and so
    // does a sale row that another statement touched or that would not fit the columns of the
    // shop's MariaDB tables.
    void Roda(const std::function<void(Servidor&)>& leitor);

private:
    ProgramaFuzz();
    void CriaVenda();
    void Confere();
    QString Texto(const QString& sql);
    QString Empresa(const QString& relativo) const;

    QTemporaryDir dir_;
    AmbienteVirtual ambiente_;
    std::unique_ptr<Servidor> servidor_;
};

// The lot and protocol answers come in pairs: the bytes up to the first NUL are
// "<key>-num-lot.txt", the rest the answer filed under lot 54. Without a NUL the lot file is
// UniNFe's "54;" and every byte goes to the answer.
struct ParDeArquivos {
    QByteArrayView lote;
    QByteArrayView resposta;
};
ParDeArquivos DivideNoNulo(const uint8_t* dados, size_t tamanho);

// The bytes as the file `caminho`.
void EscreveArquivo(const QString& caminho, QByteArrayView dados);
// A key a reader took: none, UniNFe's "0", or 44 digits with a valid check digit; aborts
// otherwise.
void ConfereChave(const QString& chave);
// The same for a key an answer carried, when the reader took it (not blank, not refused).
void ConfereChaveLida(const ChaveLida& lida);
// Prints the reason and aborts, so that libFuzzer keeps the input.
[[noreturn]] void Falha(const QString& motivo);

} // namespace nfce::teste
