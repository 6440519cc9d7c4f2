#pragma once

#include "context/Servidor.h"
#include "nfce/VarianteGerador.h"

#include <QDate>
#include <QTime>

namespace nfce {

// When the document is issued and which date names its file.
struct InstanteNfce {
    QDate data;
    QTime hora;
    QDate dataArquivo;
};

// From the panel's lblData ("dd/mm/yyyy") and lblHora ("HH:MM:SS"), the system date or the
// table nfce, as the variant says. A panel that does not hold a valid date and time raises
// ErroTipoIncompativel (13).
InstanteNfce InstanteDaNfce(Servidor& servidor, const VarianteGerador& variante);

// Offline contingency, unless the variant follows TipoEmissao and it is "1" (online).
bool EmContingencia(const Servidor& servidor, const VarianteGerador& variante);

// Program folder \ CNPJ \ Validar (Envio when issued online) \ nNF_CNPJ_series_dd_mm_yyyy-nfe.txt,
// with the CNPJ exactly as the company record stores it.
QString CaminhoNfce(const Servidor& servidor, bool contingencia, qint64 nNF,
                    const QDate& dataArquivo);

} // namespace nfce
