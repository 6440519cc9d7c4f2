#pragma once

#include "Layout.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>

namespace uninfesim {

// One line of the text layout, its fields named by the layout its count of "|" selected.
struct Registro {
    QString segmento; // as the layout spells it
    QHash<QString, QString> campos;
    QStringList ordem; // the layout's fields, in order
    int linha = 0;     // counted from 1, blank lines included
    QString texto;

    QString operator[](const QString& campo) const { return campos.value(campo); }
};

// One document: the records from its "A|" up to the next one.
struct NotaTxt {
    QList<Registro> registros;

    // The first record of the segment, or an empty one.
    Registro Primeiro(const QString& segmento) const;
    bool Tem(const QString& segmento) const;
};

struct LeituraTxt {
    enum class Resultado { Lida, SemInformacao, Falha };
    Resultado resultado = Resultado::Lida;
    QList<NotaTxt> notas;
    QString mensagemErro; // every problem found, each ending with a line break
};

// Reads a document in the text layout (Windows-1252): first line "NOTAFISCAL", a document at
// every "A|", blank lines skipped, each record checked against its layout, the fields of the
// access key checked, the groups an NFC-e cannot do without required. Never throws.
LeituraTxt LeTxt(const QByteArray& bytes);

} // namespace uninfesim
