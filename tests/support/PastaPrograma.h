#pragma once

#include <QByteArray>
#include <QStringList>
#include <QTemporaryDir>

namespace nfce::teste {

// The test shop's company record (typed with mixed case and punctuation, which the golden
// NFC-e texts depend on), as KEY=value lines.
extern const QStringList RegistroDaLoja;

// A throw-away program folder: the place where Config.ini, Empresa.Bin, the databases
// and the working folders of one test live.
class PastaPrograma {
public:
    PastaPrograma();

    const QString& caminho() const { return caminho_; }
    QString Caminho(const QString& relativo) const;

    // Config.ini from lines, written as the shops' files are: Windows-1252, CR LF.
    void EscreveConfig(const QStringList& linhas) const;
    // Empresa.Bin from plain KEY=value lines, scrambled as the record is stored.
    void EscreveEmpresa(const QStringList& linhas) const;
    void EscreveArquivo(const QString& relativo, const QByteArray& conteudo) const;
    QByteArray LeArquivo(const QString& relativo) const;

private:
    QTemporaryDir dir_;
    QString caminho_;
};

} // namespace nfce::teste
