#pragma once

#include "storage/Configuracao.h"

#include <QDir>
#include <QFile>
#include <QStringEncoder>
#include <QTemporaryDir>
#include <stdexcept>

namespace nfce::teste {

using namespace Qt::StringLiterals;

// The test shop's record, typed in the mixed case and punctuation the golden NFC-e texts need.
inline const QStringList RegistroDaLoja =
    u"CNPJ=18123456000104|NOME=Mercado Bom Preco Ltda|SERIE=1|CODMUNICIPIO=3106200|"
    "IE=062.307.904/0081|ENDERECO=Rua da Bahia|NUMERO=1148|COMPLEMENTO=loja 2|BAIRRO=Centro|"
    "CIDADE=Belo Horizonte|UF=mg|TELEFONE=(31) 3333-4444|CEP=30.160-011"_s.split(u'|');

// A throw-away program folder: Config.ini, Empresa.Bin, the databases and working folders.
class PastaPrograma {
public:
    const QString& caminho() const { return caminho_; }
    QString Caminho(const QString& relativo) const { return caminho_ + u'/' + relativo; }

    // As the shops' files are: Windows-1252, CR LF.
    void EscreveConfig(const QStringList& linhas) const {
        const QString texto = (linhas + QStringList(QString())).join(u"\r\n"_s);
        EscreveArquivo(u"Config.ini"_s, QStringEncoder("windows-1252")(texto));
    }
    // From plain KEY=value lines, scrambled as the record is stored.
    void EscreveEmpresa(const QStringList& linhas) const {
        QByteArray dados;
        for (const QString& linha : linhas)
            dados += CifraLinha(linha) + "\r\n";
        EscreveArquivo(u"Empresa.Bin"_s, dados);
    }
    void EscreveArquivo(const QString& relativo, const QByteArray& conteudo) const {
        QDir().mkpath(Caminho(relativo).section(u'/', 0, -2));
        QFile arquivo(Caminho(relativo));
        if (!arquivo.open(QIODevice::WriteOnly) || arquivo.write(conteudo) != conteudo.size())
            throw std::runtime_error("cannot write test file " + relativo.toStdString());
    }
    QByteArray LeArquivo(const QString& relativo) const {
        QFile arquivo(Caminho(relativo));
        if (!arquivo.open(QIODevice::ReadOnly))
            throw std::runtime_error("cannot read test file " + relativo.toStdString());
        return arquivo.readAll();
    }

private:
    QTemporaryDir dir_;
    QString caminho_ = dir_.path();
};

} // namespace nfce::teste
