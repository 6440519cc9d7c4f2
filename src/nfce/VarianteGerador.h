#pragma once

#include <QString>

namespace nfce {

// Where the date of the file name (and, for the table, the emission instant) comes from.
enum class OrigemData {
    Painel,     // lblData and lblHora
    Sistema,    // file name from today's date, the instant from the panel
    TabelaNfce, // the latest row of the table nfce; the panel when it has none
};

// How the document is issued.
enum class TipoDocumento {
    Contingencia,        // always offline contingency, into "\Validar\"
    ConformeTipoEmissao, // TipoEmissao "1": online into "\Envio\"; otherwise as Contingencia
};

// Which sale row names the customer.
enum class VendaDoCliente { PorNfce, PorCupom };

// The switches by which one generator serves every caller. The three callers of the system
// differ only in these points; everything else of the document is common.
struct VarianteGerador {
    QString registroA = QStringLiteral("A|4.00|NFe");
    TipoDocumento tipo = TipoDocumento::Contingencia;
    OrigemData data = OrigemData::Painel;

    VendaDoCliente vendaDoCliente = VendaDoCliente::PorNfce;
    int codigoClienteMinimo = 2;
    bool excluiDocumentoZerado = true;
    bool consultaClientes = true; // the customer table's document replaces the sale's

    bool icmsCsosn300 = true;   // the row "N10d|0|300|" of the ICMS table
    bool freteDaVenda = true;   // W02's vFrete is the sale's surcharge (else 0)
    bool codigosJanela = false; // the main window's payment codes and tails
    bool troco = true;          // the change line YA09

    // The automatic sender's generator.
    static VarianteGerador Atual() { return {}; }
    // The copy used by the single-sale re-emission with printing.
    static VarianteGerador Modulo();
    // The main window's own generator.
    static VarianteGerador Janela();
};

} // namespace nfce
