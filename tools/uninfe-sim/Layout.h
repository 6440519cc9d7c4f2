#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace uninfesim {

// One layout of a record of UniNFe's text format: the segment, its fields in order (named as
// the XML elements they fill) and which of them must not be empty.
struct Layout {
    QString segmento;
    QStringList campos;
    QStringList obrigatorios;
    QString texto; // as shown in conversion errors: "I|cProd|cEAN|...|"

    int barras() const { return int(campos.size()) + 1; }
};

// The layouts of a segment (any case); none when the segment is unknown. A segment with
// several layouts is told apart by its count of "|", and a count that fits none is refused;
// a segment with one layout takes any count (missing fields are empty, extra ones ignored).
QList<Layout> LayoutsDe(const QString& segmento);

// Group openers that carry no field ("N|", "W|", ...): skipped.
bool EhMarcador(const QString& segmento);

} // namespace uninfesim
