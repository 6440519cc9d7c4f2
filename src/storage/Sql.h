#pragma once

#include <QString>

namespace nfce {

// A text value that goes between single quotes in a statement: every "'" is doubled, so a
// name like D'ÁVILA neither breaks nor alters the statement. NUL characters are dropped,
// since both engines would end the statement text there. Ordinary values come out unchanged.
inline QString EscapaTexto(const QString& texto) {
    QString escapado = texto;
    escapado.remove(QChar(u'\0'));
    escapado.replace(QChar(u'\''), QStringLiteral("''"));
    return escapado;
}

} // namespace nfce
