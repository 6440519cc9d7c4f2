#pragma once

#include <QString>
#include <QVariant>

namespace nfce {

struct Servidor;

// Where UniNFe's files of the sale being emitted are, below the company's folder. Every
// path is resolved on disk case-insensitively ("ENVIADO" finds "Enviado"), so the mixed
// capitals the system writes name the same UniNFe folders as on Windows.
struct ArquivosDaVenda {
    explicit ArquivosDaVenda(const Servidor& servidor) : s(servidor) {}

    // A file of the company folder, `relativo` written with "\" as the system writes it.
    QString DaEmpresa(const QString& relativo) const;
    // The same below the company folder known from start-up, for the steps that come before
    // the sale's document is written.
    QString DaPastaDaEmpresa(const QString& relativo) const;
    QString NoRetorno(const QString& nome) const;
    QString NoEnvio(const QString& nome) const;

    // Base name of the sale's TXT: NNNNNNNNN_CNPJ_SSS_dd_mm_yyyy.
    QString Base() const;
    QString XmlAutorizado(const QString& chave) const;
    // The accountant's copy of the authorised XML of NFC-e `numero`, in the month folder `mes`.
    QString CopiaContabil(const QString& mes, const QVariant& numero) const;
    QString XmlValidado(const QString& chave) const;
    QString XmlComFalha(const QString& chave) const;
    QString XmlEmProcessamento(const QString& chave) const;

    const Servidor& s;
};

// Copies a file of a sale already authorised: a copy that fails is logged with its reason,
// never raised, so nothing stops the authorisation from being recorded.
void CopiaRegistrando(Servidor& s, const QString& origem, const QString& destino);

} // namespace nfce
