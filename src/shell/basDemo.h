#pragma once

#include <QStringList>

namespace nfce {

// The tray server: servidor-nfce [--pasta DIR] [--sem-janela] [--executar-agora]. A second
// server on the same program folder ends at once, silently. Without a display (or with
// --sem-janela) it runs headless and its dialogs go to the log. The log is one file a day in
// the program's LOG folder, echoed on standard output when that is a terminal. Returns the exit
// status: 0 after a normal end, 1 when the start-up failed, 2 on a usage error.
int Main(int& argc, char** argv, const QStringList& argumentos);

} // namespace nfce
