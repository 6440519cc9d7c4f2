#include "nfce/GravadorLinhas.h"

#include "nfce/CampoLimpo.h"

namespace nfce {

namespace {

// As Windows writes text in its ANSI code page: one "?" for each character it lacks.
QByteArray Ansi(const QString& texto) {
    QByteArray bytes;
    bytes.reserve(texto.size() + 2);
    for (qsizetype i = 0; i < texto.size(); ++i) {
        const char16_t c = texto[i].unicode();
        if (QChar::isHighSurrogate(c) && i + 1 < texto.size() && texto[i + 1].isLowSurrogate()) ++i;
        bytes += ByteAnsi(c).value_or('?');
    }
    return bytes;
}

} // namespace

GravadorLinhas::GravadorLinhas(QString caminho) : arquivo_(std::move(caminho)) {}

void GravadorLinhas::Escreve(const QString& linha) {
    QByteArray bytes = Ansi(linha);
    bytes += "\r\n";
    arquivo_.Escreve(bytes);
}

void GravadorLinhas::Fecha() {
    arquivo_.Conclui();
}

} // namespace nfce
