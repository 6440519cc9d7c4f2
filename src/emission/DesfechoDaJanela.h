#pragma once

#include <QString>

namespace nfce {

struct Servidor;

// The steps the window's drivers (EnviaTodos, EnviaNota) share once a sale is with UniNFe.

// One of the four finished texts, compared exactly; with `aceitaErroAoInvocar` also a text
// that starts with "Erro ao invocar".
bool DesfechoFinal(const QString& desfecho, bool aceitaErroAoInvocar);
bool ErroAoInvocar(const QString& desfecho);

// What the operator reads when UniNFe could not convert the text of sale `numero`.
QString MensagemNaoEmitido(qint64 numero, const QString& erro);

// The key (LblMens01, kept when no conversion answer names one), the lot's refusal and the
// outcome (LblMens03) of the sale in Servidor::venda.
void LeRespostasDaNota(Servidor& s);

// A finished sale: message lines cleared, the authorised XML of `chave` filed for the
// accountant under the NFC-e number, and the sale marked. A sale that only reached "Erro ao
// invocar" is marked as sent (enviotime 1), not as finished: the resend queues it again.
void ConcluiVenda(Servidor& s, const QString& chave, qint64 nfce, const QString& desfecho);

} // namespace nfce
