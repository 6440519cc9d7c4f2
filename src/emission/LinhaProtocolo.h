#pragma once

#include "storage/Larguras.h"

#include <QStringList>

namespace nfce {

// One line of UniNFe's "-pro-rec.txt", cut at every ";". Fields are numbered from 0; a field
// the line does not have reads as "", so a short or damaged line never stops the reader.
class LinhaProtocolo {
public:
    explicit LinhaProtocolo(const QString& linha) : campos_(linha.split(u';')) {}

    QString Campo(int i) const { return i < campos_.size() ? campos_[i] : QString(); }
    // The values stored in the sale, at most as wide as their columns.
    QString Chave() const { return Campo(2).left(LarguraChave); }
    QString Protocolo() const { return Campo(4).left(LarguraAutorizacao); }
    QString Motivo() const { return Campo(7).left(LarguraTexto); }
    // The status code may stand in field 5 or in field 6.
    bool TemCodigo(const QString& codigo) const { return Campo(5) == codigo || Campo(6) == codigo; }
    // What the caller shows for a line nothing else explains.
    QString Mensagem() const { return Campo(6) + QStringLiteral(" - ") + Campo(7); }

private:
    QStringList campos_;
};

} // namespace nfce
