#include "nfce/CampoLimpo.h"
#include "nfce/Documento.h"
#include "nfce/Valores.h"
#include "storage/Configuracao.h"
#include "storage/Formatacao.h"

namespace nfce {

using namespace Qt::StringLiterals;

namespace {

// A number as the regional settings print it: decimal comma, no trailing zeros ("18,5").
QString TextoRegional(double valor) {
    return TextoNumero(valor).replace(u'.', u',');
}

// The fields of the table's first row; empty texts when it has none.
QStringList PrimeiraLinha(Servidor& s, const QString& tabela, const QStringList& campos) {
    Registros rs;
    s.conexoes.AbreTabela(rs, tabela);
    QStringList valores;
    for (const QString& campo : campos)
        valores.append(rs.Eof() ? QString() : rs.Texto(campo));
    return valores;
}

} // namespace

void EscreveInformacoes(DocumentoNfce& doc) {
    Servidor& s = doc.servidor;
    const QStringList mensagens = PrimeiraLinha(s, u"empresa"_s, {u"mens1"_s, u"mens2"_s});
    const QString operador = Maiusculas(PrimeiraLinha(s, u"caixas"_s, {u"nome"_s}).first());
    // The approximate tax burden uses one fixed rate for every product.
    const QString tributos =
        TextoRegional(Arredonda(doc.totais.vProd.paraDouble() * 18.00 / 100, 2));
    const QString espacos(5, u' ');
    const QString infCpl = u"TRIBUTOS (R$ "_s + tributos + u") FONTE: IBPT(18,00%)"_s + espacos +
                           u";OP.:"_s + operador;
    QString mensagem;
    if (!Vazio(s.venda.Vendedor)) mensagem += u"Vend.: "_s + s.venda.Vendedor + espacos + u';';
    mensagem += Maiusculas(mensagens[0]) + espacos + u';' + Maiusculas(mensagens[1]) + espacos;
    doc.Escreve(u"Z||"_s + CampoLimpo(infCpl, 5000) + u'|' + CampoLimpo(mensagem, 5000) + u'|');
}

} // namespace nfce
