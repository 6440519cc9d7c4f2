#pragma once

#include "storage/Publicacao.h"

namespace nfce {

// A text file for UniNFe written line by line as the records are built: Windows-1252, every
// line ended by CR LF, memory flat however long the document. The lines go to a temporary
// name that UniNFe does not watch; the file takes its real name only when Fecha succeeds, so
// UniNFe never picks up half a document and a failed generation leaves nothing behind
// (Publicacao). A character outside Windows-1252 is written as "?".
class GravadorLinhas {
public:
    // Creates the file, replacing one of the same name at Fecha. A full disk raises
    // ErroDiscoCheio (61), a missing folder ErroCaminhoNaoEncontrado (76), any other failure
    // ErroAcessoCaminho (75).
    explicit GravadorLinhas(QString caminho);

    void Escreve(const QString& linha);
    // Puts the file in place under its name (same errors).
    void Fecha();

    const QString& Caminho() const { return arquivo_.Caminho(); }

private:
    Publicacao arquivo_;
};

} // namespace nfce
