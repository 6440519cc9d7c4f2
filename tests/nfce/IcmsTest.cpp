#include "nfce/Icms.h"

#include <gtest/gtest.h>

namespace nfce {
namespace {

using namespace Qt::StringLiterals;

// The computed groups; the fixed lines of the other codes are in the golden documents.
TEST(Icms, BaseEImpostoCalculados) {
    const std::vector<std::tuple<ItemIcms, QString, double, double>> casos = {
        // 3 x 1.99 less 0.50 at 18 %.
        {{1.99, 3, 0, 0.50, 0, 1800, 0}, u"N02|0|00|3|5.47|18.00|0.98|||"_s, 5.47, 0.98},
        // 5.97 less 33.33 % is 3.980199; 18 % of it 0.716...
        {{1.99, 3, 0, 0, 2, 1800, 33.33}, u"N04|0|20|3|33.33|3.98|18.00|0.72||||||"_s, 3.98, 0.72},
        // Halves go up: 0.125 is 0.13, and 7 % of 0.13 (0.0091) is 0.01.
        {{0.125, 1, 0, 0, 0, 700, 0}, u"N02|0|00|3|0.13|7.00|0.01|||"_s, 0.13, 0.01},
        {{10, 1, 0.6, 0, 0, 1200, 0}, u"N02|0|00|3|10.60|12.00|1.27|||"_s, 10.6, 1.27},
        {{10, 1, 0, 0, 5, 1800, 0}, QString(), 0, 0},
        {{10, 1, 0, 0, std::nullopt, 1800, 0}, QString(), 0, 0},
    };
    for (const auto& [item, linha, vBC, vICMS] : casos) {
        const LinhaIcms r = CalculaIcms(item, true);
        EXPECT_EQ(r.linha, linha);
        EXPECT_DOUBLE_EQ(r.vBC, vBC);
        EXPECT_DOUBLE_EQ(r.vICMS, vICMS);
    }
    EXPECT_EQ(CalculaIcms({10, 1, 0, 0, 16, 0, 0}, false).linha, QString());
}

} // namespace
} // namespace nfce
