#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

namespace uninfesim {

// The text of every element of a small XML document, by local name (the first occurrence
// wins), and every attribute as "element@attribute".
struct FolhasXml {
    QHash<QString, QString> valores;
    QString erro; // the parser's complaint; empty when the document is well formed

    bool ok() const { return erro.isEmpty(); }
    QString operator[](const QString& nome) const { return valores.value(nome).trimmed(); }
};

FolhasXml LeFolhas(const QByteArray& xml);

} // namespace uninfesim
