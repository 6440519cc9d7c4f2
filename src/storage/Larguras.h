#pragma once

namespace nfce {

// Widths of the sale columns that take text read from UniNFe's answer files, as the shop's
// MariaDB tables declare them. A strict server refuses a longer value where a lenient one
// cuts it; the readers cut it themselves, so a damaged answer never stops a statement.
inline constexpr int LarguraChave = 44;
inline constexpr int LarguraAutorizacao = 60;
// TEXT holds 65 535 bytes; a character read from an ANSI file takes at most three.
inline constexpr int LarguraTexto = 21845;

} // namespace nfce
