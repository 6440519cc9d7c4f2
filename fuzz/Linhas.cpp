// The line reader under every answer file.
#include "storage/ArquivoTexto.h"
#include "support/ProgramaFuzz.h"

void nfce::teste::Alvo(QByteArrayView bytes) {
    const QStringList linhas = LinhasDoTexto(bytes);
    for (const QString& linha : linhas)
        ConfereLinha(linha, "linha");
    // Only an empty file or a lone line end has no lines: every byte decodes to a character.
    const bool semLinhas = bytes.isEmpty() || bytes == "\n" || bytes == "\r" || bytes == "\r\n";
    if (linhas.isEmpty() != semLinhas) Falha(QStringLiteral("linhas perdidas ou inventadas"));
}
