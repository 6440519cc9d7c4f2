#include "nfce/CampoLimpo.h"

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

bool Separador(char32_t c) {
    return c == U'|' || QChar::category(c) == QChar::Other_Control;
}

// One character (a surrogate pair counts as one) as the field takes it.
void Acrescenta(QString& campo, QStringView caractere) {
    const char32_t c = caractere.size() == 2 ? QChar::surrogateToUcs4(caractere[0], caractere[1])
                                             : caractere[0].unicode();
    if (Separador(c)) {
        campo += u' ';
    } else if (c <= 0xFFFF && ByteAnsi(static_cast<char16_t>(c))) {
        campo += caractere;
    } else {
        // The compatibility decomposition without its marks: "ő" gives "o", "ﬁ" gives "fi".
        for (const QChar parte : caractere.toString().normalized(QString::NormalizationForm_KD))
            if (Separador(parte.unicode()))
                campo += u' ';
            else if (!parte.isMark() && ByteAnsi(parte.unicode()))
                campo += parte;
    }
}

} // namespace

std::optional<char> ByteAnsi(char16_t c) {
    if (c < 0x80) return static_cast<char>(c);
    const auto byte = TabelaAnsi().constFind(c);
    if (byte == TabelaAnsi().cend()) return std::nullopt;
    return *byte;
}

QString CampoLimpo(const QString& texto, qsizetype maximo) {
    // Composed first, so a letter typed as base and accent stays one letter.
    const QString composto = texto.normalized(QString::NormalizationForm_C);
    QString campo;
    campo.reserve(std::min(composto.size(), maximo));
    for (qsizetype i = 0; i < composto.size() && campo.size() < maximo;) {
        const bool par = composto[i].isHighSurrogate() && i + 1 < composto.size() &&
                         composto[i + 1].isLowSurrogate();
        const qsizetype tamanho = par ? 2 : 1;
        Acrescenta(campo, QStringView(composto).mid(i, tamanho));
        i += tamanho;
    }
    campo.truncate(maximo);
    return campo;
}

} // namespace nfce
