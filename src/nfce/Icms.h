#pragma once

#include <QString>
#include <optional>

namespace nfce {

// What the ICMS line of one item depends on.
struct ItemIcms {
    double valor = 0; // unit price
    double quant = 0;
    double acrescimo = 0;
    double desconto = 0;
    std::optional<qint64>
        cst;            // the product's tax code; none when the product or its code is missing
    double icms = 0;    // rate in hundredths of a percent (1800 is 18.00 %)
    double reducao = 0; // base reduction in percent
};

struct LinhaIcms {
    QString linha;    // empty when no row of the table matches the code
    double vBC = 0;   // rounded, for the document's total
    double vICMS = 0; // rounded, for the document's total
};

// The ICMS group of an item by the product's tax code. Codes 0 and 2 (normal regime 00 and
// 20) carry a computed base and tax; the Simples Nacional codes are fixed lines. Without
// `csosn300` the row of code 16 (CSOSN 300) is left out of the table.
LinhaIcms CalculaIcms(const ItemIcms& item, bool csosn300);

} // namespace nfce
