#pragma once

#include <QString>

namespace nfce {

// The few statements of the system that SQLite does not take as MySQL does, rewritten to
// what SQLite means by them; everything else passes unchanged. MySQL gets the text as given.
//   UPDATE ... ORDER BY ... (no LIMIT)   the ORDER BY is dropped (every row is updated anyway)
//   DELETE * FROM t                      DELETE FROM t
//   INSERT INTO t () VALUES ()           INSERT INTO t DEFAULT VALUES
QString AdaptaSqlite(const QString& sql);

} // namespace nfce
