#include "nfce/VarianteGerador.h"

namespace nfce {

VarianteGerador VarianteGerador::Modulo() {
    VarianteGerador v;
    v.registroA = QStringLiteral("A|4.00|");
    v.data = OrigemData::Sistema;
    // The customer its caller already has: any customer code from 1 on, any document.
    v.codigoClienteMinimo = 1;
    v.excluiDocumentoZerado = false;
    v.consultaClientes = false;
    v.icmsCsosn300 = false;
    return v;
}

VarianteGerador VarianteGerador::Janela() {
    VarianteGerador v;
    v.registroA = QStringLiteral("A|4.00|");
    v.tipo = TipoDocumento::ConformeTipoEmissao;
    v.data = OrigemData::TabelaNfce;
    v.vendaDoCliente = VendaDoCliente::PorCupom;
    v.icmsCsosn300 = false;
    v.freteDaVenda = false;
    v.codigosJanela = true;
    v.troco = false;
    return v;
}

} // namespace nfce
