// The window program's start and end around the main window: what InitInstance and
// ExitInstance do, apart from running the dialog.
#pragma once

#include <QStringList>
#include <string>

#include "app/CKestoApp.h"

class QWidget;

namespace kesto {

// The program path and its arguments joined by single blanks, as the command line is read.
std::string JoinCommandLine(const QStringList& arguments);

// Settings, then the input files. 1 on success; on failure ExitParam holds the code to end with.
int StartUp(CKestoApp& app);

// Writes the per-user values, frees the job and the message file and returns the settled
// exit code (not yet cut to what the platform keeps).
int ExitInstance(CKestoApp& app);

// Ends the process at once with code, printing the notice of a code other than 0.
[[noreturn]] void EndProcess(int code);

// The process exit code for a settled code, with its notice on stderr.
int FinishProcess(int code);

// Grabs window into a PNG file; true when written.
bool SaveScreenshot(QWidget& window, const QString& path);

}  // namespace kesto
