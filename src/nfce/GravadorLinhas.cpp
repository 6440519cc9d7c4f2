#include "nfce/GravadorLinhas.h"

#include "nfce/CampoLimpo.h"
#include "storage/ArquivoTexto.h"

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

GravadorLinhas::GravadorLinhas(QString caminho) : caminho_(std::move(caminho)), arquivo_(caminho_) {
    if (!arquivo_.open(QIODevice::WriteOnly)) Falha();
}

void GravadorLinhas::Escreve(const QString& linha) {
    QByteArray bytes = Ansi(linha);
    bytes += "\r\n";
    if (arquivo_.write(bytes) != bytes.size()) Falha();
}

void GravadorLinhas::Fecha() {
    if (!arquivo_.commit()) Falha();
}

void GravadorLinhas::Falha() const {
    throw ErroDeGravacao(caminho_, arquivo_.errorString());
}

} // namespace nfce
