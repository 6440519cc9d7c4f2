#include "emission/DiagnosticoRejeicao.h"

#include "context/Servidor.h"
#include "emission/Autorizacao.h"
#include "emission/LinhaProtocolo.h"
#include "emission/SqlVenda.h"
#include "storage/Formatacao.h"
#include "storage/Registros.h"
#include "storage/Sql.h"

#include <QRegularExpression>
#include <optional>

namespace nfce {

using namespace Qt::StringLiterals;

namespace {

enum class Tratamento {
    Dados,        // erro = the message, tempo '0'
    Produto,      // the named item's product code in message and erro, tempo '0'
    Inutilizada,  // erro = the message, sale and items marked situacao 'S'
    Duplicidade,  // counts as authorised: row, accounting copy, enviotime 1 in between
    SoDuplicidade // the row statement of Duplicidade alone
};

// Where the item number stands in the reason: 3 characters at `posicao` (from 0) of field 6,
// or of field 7 when the code stands in field 6 (`segueOCodigo`). -1: the sale's first item.
struct Item {
    int posicao = -1;
    bool segueOCodigo = false;
};

struct Regra {
    const char* codigo;
    Tratamento tratamento;
    const char* mensagem;  // Produto: followed by the product code
    const char* erro = ""; // Produto: followed by the product code; otherwise the message
    Item item = {};
    bool zeros = true; // the product code padded to 6 digits in erro
    bool enviotime = false;
    bool reemite = false;
};

// The texts are the operators' vocabulary, spelling included.
const Regra Regras[] = {
    {.codigo = "778",
     .tratamento = Tratamento::Produto,
     .mensagem = "Erro: NCM Inexistente Código do Produto: ",
     .erro = "NCM Inexistente Cod. Produto ",
     .item = {.posicao = 43, .segueOCodigo = true},
     .enviotime = true,
     .reemite = true},
    {.codigo = "315",
     .tratamento = Tratamento::Dados,
     .mensagem = "Data de Emissao anterior ao inicio da autorizacao de NFC-e"},
    {.codigo = "206",
     .tratamento = Tratamento::Inutilizada,
     .mensagem = "NF-Ce ja esta inutilizada na Base de dados da SEFAZ",
     .enviotime = true},
    {.codigo = "204",
     .tratamento = Tratamento::Duplicidade,
     .mensagem = "Autorizado o uso da NF-e"},
    {.codigo = "539",
     .tratamento = Tratamento::Duplicidade,
     .mensagem = "Autorizado o uso da NF-e"},
    {.codigo = "539",
     .tratamento = Tratamento::Duplicidade,
     .mensagem = "Autorizado o uso da NF-e"},
    {.codigo = "866", .tratamento = Tratamento::Dados, .mensagem = "Ausencia de troco"},
    {.codigo = "869", .tratamento = Tratamento::Dados, .mensagem = "Valor do troco incorreto."},
    {.codigo = "865",
     .tratamento = Tratamento::Dados,
     .mensagem = "Total de Pagamentos menor que o Total"},
    {.codigo = "383",
     .tratamento = Tratamento::Produto,
     .mensagem = "Rejeiçao: Item com CSOSN indevido.Código do Produto: ",
     .erro = "Item com CSOSN indevido. Cod. Produto ",
     .item = {.posicao = 41}},
    {.codigo = "725",
     .tratamento = Tratamento::Produto,
     .mensagem = "Erro: CFOP Inexistente Código do Produto: ",
     .erro = "CFOP Inexistente Cod. Produto ",
     .item = {.posicao = 41},
     .zeros = false,
     .enviotime = true},
    {.codigo = "386",
     .tratamento = Tratamento::Produto,
     .mensagem = "Rejeicao: CFOP nao permitido para o CSOSN Código do Produto: ",
     .erro = "CFOP nao permitido para CST. Cod. Produto ",
     .item = {.posicao = 49, .segueOCodigo = true},
     .enviotime = true,
     .reemite = true},
    {.codigo = "395",
     .tratamento = Tratamento::Dados,
     .mensagem = "Endereco do site da UF da Consulta via QR-Code diverge do previsto"},
    {.codigo = "208",
     .tratamento = Tratamento::Dados,
     .mensagem = "CPF ou CNPJ do Destinatario Invalido"},
    {.codigo = "204",
     .tratamento = Tratamento::SoDuplicidade,
     .mensagem = "Autorizado o uso da NF-e"},
    {.codigo = "806",
     .tratamento = Tratamento::Produto,
     .mensagem = "Rejeicao: Operacao com ICMS-ST sem informacao do CEST",
     .erro = "Operacao com ICMS-ST sem informacao do CEST",
     .enviotime = true,
     .reemite = true},
    {.codigo = "237", .tratamento = Tratamento::Dados, .mensagem = "CPF do Destinatario Invalido"},
    {.codigo = "590",
     .tratamento = Tratamento::Dados,
     .mensagem = "Informado CST para emissor do Simples Nacional"},
    {.codigo = "208",
     .tratamento = Tratamento::Dados,
     .mensagem = "CPF ou CNPJ do Destinatario Invalido"},
    {.codigo = "385",
     .tratamento = Tratamento::Produto,
     .mensagem = "Rejeicao: Grupo de Tributacao ICMSSN900, informando dados do ICMS-ST"
                 "Código do Produto: ",
     .erro = "Grupo de Tributacao. Cod. Produto ",
     .item = {.posicao = 76},
     .enviotime = true},
};

// SEFAZ's reason: the field after the one holding the code.
QString MotivoDaLinha(const LinhaProtocolo& linha, const Regra& regra) {
    return linha.Campo(linha.Campo(5) == QLatin1String(regra.codigo) ? 6 : 7).left(LarguraTexto);
}

// The product code of the item the reason names, read as stored; none when the number cut at
// the fixed position names no item of the sale (the states word the reason differently).
std::optional<QString> ProdutoDoItem(Servidor& s, const LinhaProtocolo& linha, const Regra& regra) {
    QString sql = u"SELECT cupom, item, codprod FROM itens"_s + OndeCupom(s.venda);
    if (regra.item.posicao >= 0) {
        const bool noCampo7 =
            regra.item.segueOCodigo && linha.Campo(5) != QLatin1String(regra.codigo);
        const QString motivo = linha.Campo(noCampo7 ? 7 : 6);
        sql += u" AND item = "_s + TextoNumero(Val(motivo.mid(regra.item.posicao, 3)));
    }
    Registros itens;
    s.conexoes.AbreConsulta(itens, sql);
    if (itens.Eof()) return std::nullopt;
    return itens.Texto(u"codprod"_s);
}

// What a duplicate carries as its protocol number. The authorised XML UniNFe filed for the key
// (the sale was authorised before, and the server stopped before recording it) holds SEFAZ's
// own. Otherwise the receipt number is cut from SEFAZ's reason at its fixed place (for 204 the
// "]" after it comes along, as the operators know it), and found after "nRec:" when the
// wording has moved it: a cut that is not the number is never stored.
QString ProtocoloDaDuplicidade(Servidor& s, const LinhaProtocolo& linha, const QString& codigo) {
    const QString doXml = ProtocoloDoXml(s, s.painel.LblMens01);
    if (!doXml.isEmpty()) return doXml;
    const QString motivo = linha.Campo(6);
    const QString corte = codigo == u"204"_s ? motivo.mid(36, 16) : motivo.mid(121, 15);
    static const QRegularExpression numero(u"^\\d{15}\\]?$"_s);
    if (numero.match(corte).hasMatch()) return corte;
    static const QRegularExpression recibo(u"nRec:(\\d{1,20})"_s);
    return recibo.match(motivo).captured(1);
}

void MarcaDuplicidade(Servidor& s, const LinhaProtocolo& linha, const Regra& regra) {
    const QString codigo = QLatin1String(regra.codigo);
    s.conexoes.Executa(
        u"UPDATE vendas SET erro = '"_s + QLatin1String(regra.mensagem) + u"', autorizacao = '"_s +
        EscapaTexto(ProtocoloDaDuplicidade(s, linha, codigo)) + u"', tempo = '1', chave = '"_s +
        EscapaTexto(linha.Chave()) + u"' WHERE nfce = "_s + QString::number(s.venda.NumNfce));
}

void Aplica(Servidor& s, const LinhaProtocolo& linha, const Regra& regra, QString& mensagem) {
    const QString texto = QString::fromUtf8(regra.mensagem);
    switch (regra.tratamento) {
    case Tratamento::Dados:
        mensagem = texto;
        s.conexoes.Executa(u"UPDATE vendas SET erro = '"_s + texto + u"', tempo = '0'"_s +
                           OndeCupom(s.venda));
        break;
    case Tratamento::Produto: {
        const std::optional<QString> produto = ProdutoDoItem(s, linha, regra);
        const bool comCodigo = regra.item.posicao >= 0;
        QString erro = MotivoDaLinha(linha, regra);
        if (produto) {
            mensagem = comCodigo ? texto + *produto : texto;
            erro = QString::fromUtf8(regra.erro) +
                   (comCodigo ? (regra.zeros ? Zeros(*produto, 6) : *produto) : QString());
        } else {
            mensagem = erro;
        }
        s.conexoes.Executa(u"UPDATE vendas SET erro = '"_s + EscapaTexto(erro) +
                           u"', tempo = '0'"_s + OndeCupom(s.venda));
        break;
    }
    case Tratamento::Inutilizada:
        mensagem = texto;
        s.conexoes.Executa(u"UPDATE vendas SET erro = '"_s + texto + u"', situacao = 'S'"_s +
                           OndeCupom(s.venda));
        s.conexoes.Executa(u"UPDATE itens SET situacao = 'S'"_s + OndeCupom(s.venda));
        break;
    case Tratamento::Duplicidade:
    case Tratamento::SoDuplicidade:
        mensagem = texto;
        MarcaDuplicidade(s, linha, regra);
        if (regra.tratamento == Tratamento::Duplicidade) {
            CopiaContabil(s, s.painel.LblMens01);
            s.conexoes.Executa(u"UPDATE vendas SET enviotime = 1"_s + OndeCupom(s.venda));
            CopiaParaContador(s, s.painel.LblMens01);
        }
        break;
    }
}

} // namespace

void DiagnosticaRejeicao(Servidor& s, const LinhaProtocolo& linha, bool autorizada,
                         QString& mensagem) {
    for (const Regra& regra : Regras) {
        if (!linha.TemCodigo(QLatin1String(regra.codigo))) continue;
        Aplica(s, linha, regra, mensagem);
        if (regra.enviotime)
            s.conexoes.Executa(u"UPDATE vendas SET enviotime = 1"_s + OndeCupom(s.venda));
        if (regra.reemite && !autorizada && s.venda.ModoRetorno == u"VENDA"_s && s.EmiteNfceImprime)
            s.EmiteNfceImprime(QString::number(s.venda.NumNfce));
    }
}

} // namespace nfce
