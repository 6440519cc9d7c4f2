#include "nfce/CampoLimpo.h"
#include "nfce/Documento.h"
#include "nfce/Valores.h"
#include "storage/Configuracao.h"
#include "storage/Formatacao.h"

namespace nfce {

using namespace Qt::StringLiterals;

namespace {

QString ConsultaVenda(const DocumentoNfce& doc) {
    const QString inicio = u"SELECT cliente, nomecliente, cgc, cupom FROM vendas WHERE "_s;
    if (doc.variante.vendaDoCliente == VendaDoCliente::PorCupom)
        return inicio + u"cupom = "_s + QString::number(doc.servidor.venda.NumCupom);
    return inicio + u"nfce = "_s + doc.Numero();
}

} // namespace

void EscreveDestinatario(DocumentoNfce& doc) {
    Conexoes& conexoes = doc.servidor.conexoes;
    Registros venda;
    conexoes.AbreConsulta(venda, ConsultaVenda(doc));
    if (venda.Eof()) return;
    const qint64 codigo = InteiroDe(venda.Campo(u"cliente"_s));
    const QString nome = CampoLimpo(Maiusculas(venda.Texto(u"nomecliente"_s)), 60);
    QString documento = venda.Texto(u"cgc"_s);
    // The walk-in customer (code 1) and the zeroed document stand for "not identified".
    if (Vazio(documento) || codigo < doc.variante.codigoClienteMinimo ||
        (doc.variante.excluiDocumentoZerado && documento == u"00000000000000"_s))
        return;
    if (doc.variante.consultaClientes) {
        Registros cliente;
        conexoes.AbreConsulta(cliente, u"SELECT codigo, cgc FROM clientes WHERE codigo = "_s +
                                           QString::number(codigo));
        if (!cliente.Eof()) documento = cliente.Texto(u"cgc"_s);
    }
    doc.Escreve(u"E|"_s + nome + u"|9||||"_s);
    const QString digitos = CampoLimpo(LimpaTexto(documento), 14);
    doc.Escreve((digitos.size() == 11 ? u"E03|"_s : u"E02|"_s) + digitos + u'|');
}

} // namespace nfce
