#pragma once

#include "LeituraTxt.h"

#include <QString>

namespace uninfesim {

// The access key of a document read from text (cNF derived from nNF when B leaves it empty).
QString ChaveDaNota(const NotaTxt& nota);

// A converted document as UniNFe leaves it: signed, one line, UTF-8.
struct NfeAssinada {
    QString chave;
    QString xml; // declaration + <NFe>
    QString digVal;
};

// Carries the groups an NFC-e is made of (ide, emit, dest, det, total, transp, pag, infAdic),
// adds the QR code and a signature whose digest is the infNFe's SHA-1.
NfeAssinada MontaNfe(const NotaTxt& nota);

// "&", "<" and ">" escaped, as element text is written (quotes stay as they are).
QString Escapa(const QString& texto);

} // namespace uninfesim
