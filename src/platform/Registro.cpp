#include "platform/Registro.h"

#include <QDir>
#include <QFile>
#include <cstdio>

namespace nfce {

using namespace Qt::StringLiterals;

void Registro::Escreve(const QDateTime& quando, const QString& linha) const {
    QString texto = quando.toString(u"yyyy-MM-dd HH:mm:ss "_s) + linha;
    texto.replace(u"\r\n"_s, u" "_s).replace(u'\n', u' ').replace(u'\r', u' ');
    for (const Destino& destino : destinos_)
        destino(quando, texto);
}

Registro::Destino NoFluxo(std::FILE* fluxo) {
    return [fluxo](const QDateTime&, const QString& linha) {
        std::fprintf(fluxo, "%s\n", linha.toUtf8().constData());
        std::fflush(fluxo);
    };
}

// Opened and closed for every line: a new day starts a new file, and a crash loses nothing
// already written. The folder is made only when the file cannot be opened.
Registro::Destino ArquivoDoDia(const QString& pasta) {
    return [pasta](const QDateTime& quando, const QString& linha) {
        QFile arquivo(
            QDir(pasta).filePath(u"servidor-nfce-%1.log"_s.arg(quando.toString(u"yyyy-MM-dd"_s))));
        const auto modo = QIODevice::WriteOnly | QIODevice::Append;
        if (!arquivo.open(modo) && !(QDir().mkpath(pasta) && arquivo.open(modo))) return;
        arquivo.write(linha.toUtf8() + '\n');
    };
}

} // namespace nfce
