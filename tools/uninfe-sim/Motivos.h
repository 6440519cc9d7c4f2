#pragma once

#include <QString>

namespace uninfesim {

// What SEFAZ puts inside a reason text for the codes that name something.
struct DadosMotivo {
    int item = 1;
    QString nRec;  // receipt of the earlier sending (duplicates)
    QString chNFe; // key of the earlier document (539)
};

// SEFAZ's reason text for a status code, in ASCII as state 31 sends it.
QString MotivoSefaz(int cStat, const DadosMotivo& dados = {});

} // namespace uninfesim
