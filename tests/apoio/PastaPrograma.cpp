#include "apoio/PastaPrograma.h"

#include "storage/Configuracao.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringEncoder>

namespace nfce::teste {

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
