#pragma once

#include <QFile>
#include <QStringList>
#include <cstdlib>

// Config.ini of a benchmark's program folder, as the shops write it (CR LF).
inline void EscreveConfig(const QString& pasta, const QStringList& linhas) {
    QFile arquivo(pasta + QStringLiteral("/Config.ini"));
    if (!arquivo.open(QIODevice::WriteOnly)) std::abort();
    arquivo.write((linhas.join(QStringLiteral("\r\n")) + QStringLiteral("\r\n")).toLatin1());
}
