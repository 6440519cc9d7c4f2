#include "nfce/GravadorLinhas.h"

#include "storage/ArquivoTexto.h"

#include <QHash>
#include <QStringDecoder>

namespace nfce {

namespace {

// The characters of Windows-1252 above ASCII and their bytes.
const QHash<char16_t, char>& TabelaAnsi() {
    static const QHash<char16_t, char> tabela = [] {
        QHash<char16_t, char> t;
        QStringDecoder ansi("windows-1252");
        for (int byte = 0x80; byte <= 0xFF; ++byte) {
            const QString c = ansi.decode(QByteArray(1, static_cast<char>(byte)));
            if (c.size() == 1 && c[0] != QChar::ReplacementCharacter)
                t.insert(c[0].unicode(), static_cast<char>(byte));
        }
        return t;
    }();
    return tabela;
}

// As Windows writes text in its ANSI code page: one "?" for each character it lacks.
QByteArray Ansi(const QString& texto) {
    QByteArray bytes;
    bytes.reserve(texto.size() + 2);
    for (qsizetype i = 0; i < texto.size(); ++i) {
        const char16_t c = texto[i].unicode();
        if (c < 0x80) {
            bytes += static_cast<char>(c);
            continue;
        }
        if (QChar::isHighSurrogate(c) && i + 1 < texto.size() && texto[i + 1].isLowSurrogate()) ++i;
        bytes += TabelaAnsi().value(c, '?');
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
