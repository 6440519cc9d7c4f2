#include "nfce/GravadorLinhas.h"

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
