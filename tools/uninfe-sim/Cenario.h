#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <optional>

namespace uninfesim {

// What happens to one NFC-e number.
enum class Desfecho {
    Autoriza,
    Rejeita,          // SEFAZ rejects the document with `codigo`
    Duplicidade,      // 204: the same key was authorised before
    DuplicidadeChave, // 539: the number was authorised before under another key
    ErroConversao,    // UniNFe cannot convert the text ("-nfe.err")
    LoteRecusado,     // the sending fails ("-pro-rec.err")
    RejeitaLote,      // SEFAZ rejects the whole lot (first line only)
    SemResposta,      // sent, and SEFAZ never answers
};

// How the access-key request is answered.
enum class RespostaChave {
    Pedida,  // in the form of the request (XML for XML, text for text)
    Texto,   // in the text form even when XML was asked
    Zero,    // "0" instead of the key
    Nenhuma, // never
};

struct Cenario {
    Desfecho desfecho = Desfecho::Autoriza;
    int codigo = 0;                // of Rejeita and RejeitaLote
    int item = 1;                  // the item SEFAZ names in the reason, where it names one
    std::optional<QString> motivo; // replaces the reason (the "Message" of a refused lot)
    int atrasoPassagens = 0;       // SEFAZ answers only this many passes after the sending
    int atrasoSegundos = 0;        // ... and this many seconds after it
    RespostaChave chave = RespostaChave::Pedida;
    bool semProcNFe = false;                 // authorised, but the "-procNFe.xml" is not filed
    std::optional<QString> chaveFalsa;       // the key answer carries this instead of the key
    std::optional<QString> chaveNoProtocolo; // the protocol line carries this key

    static Cenario Rejeicao(int codigo, int item = 1);
    static Cenario De(Desfecho desfecho);
};

// A scenario list, one "NUMBER=words" a line:
//   1005=rejeita 778 item 3       1006=duplicidade          1007=autoriza atraso 4
//   1008=lote-recusado motivo Erro ao invocar o serviço    padrao=autoriza atraso 10s
// Words: autoriza | rejeita CODE | duplicidade | duplicidade-chave | erro-conversao |
// lote-recusado | rejeita-lote [CODE] | sem-resposta, then any of item N, atraso N (passes)
// or Ns (seconds), chave-txt, chave-zero, sem-chave, sem-procnfe, chave-falsa TEXT,
// protocolo-chave TEXT (TEXT without blanks), and last "motivo TEXT".
// Blank lines and lines starting with "#" are skipped.
struct Cenarios {
    QHash<qint64, Cenario> porNumero;
    std::optional<Cenario> padrao;
    QStringList erros; // "linha N: ..." for every line that could not be read
};

Cenarios LeCenarios(const QString& texto);

// The words after "NUMBER=". False, with the reason in `erro`, when they cannot be read.
bool LeCenario(const QString& palavras, Cenario& cenario, QString& erro);

} // namespace uninfesim
