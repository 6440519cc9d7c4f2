#include "support/PastaPrograma.h"

#include "storage/Configuracao.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringEncoder>

namespace nfce::teste {

using namespace Qt::StringLiterals;

const QStringList RegistroDaLoja = {u"CNPJ=18123456000104"_s,
                                    u"NOME=Mercado Bom Preco Ltda"_s,
                                    u"SERIE=1"_s,
                                    u"CODMUNICIPIO=3106200"_s,
                                    u"IE=062.307.904/0081"_s,
                                    u"ENDERECO=Rua da Bahia"_s,
                                    u"NUMERO=1148"_s,
                                    u"COMPLEMENTO=loja 2"_s,
                                    u"BAIRRO=Centro"_s,
                                    u"CIDADE=Belo Horizonte"_s,
                                    u"UF=mg"_s,
                                    u"TELEFONE=(31) 3333-4444"_s,
                                    u"CEP=30.160-011"_s};

PastaPrograma::PastaPrograma() : caminho_(dir_.path()) {}

QString PastaPrograma::Caminho(const QString& relativo) const {
    return caminho_ + QLatin1Char('/') + relativo;
}

void PastaPrograma::EscreveConfig(const QStringList& linhas) const {
    QStringEncoder ansi("windows-1252");
    QByteArray dados;
    for (const QString& linha : linhas)
        dados += QByteArray(ansi(linha)) + "\r\n";
    EscreveArquivo(QStringLiteral("Config.ini"), dados);
}

void PastaPrograma::EscreveEmpresa(const QStringList& linhas) const {
    QByteArray dados;
    for (const QString& linha : linhas)
        dados += CifraLinha(linha) + "\r\n";
    EscreveArquivo(QStringLiteral("Empresa.Bin"), dados);
}

void PastaPrograma::EscreveArquivo(const QString& relativo, const QByteArray& conteudo) const {
    const QString destino = Caminho(relativo);
    QDir().mkpath(QFileInfo(destino).path());
    QFile arquivo(destino);
    if (!arquivo.open(QIODevice::WriteOnly) || arquivo.write(conteudo) != conteudo.size())
        throw std::runtime_error("cannot write test file " + destino.toStdString());
}

QByteArray PastaPrograma::LeArquivo(const QString& relativo) const {
    QFile arquivo(Caminho(relativo));
    if (!arquivo.open(QIODevice::ReadOnly))
        throw std::runtime_error("cannot read test file " + arquivo.fileName().toStdString());
    return arquivo.readAll();
}

} // namespace nfce::teste
