#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace kavro {

// What a run of runShellScript came to. On success code is 0 and message empty; a command that
// failed gives its exit status and what it printed (the end of it, when it printed a lot). The
// runner's own failures have negative codes, so that no exit status is mistaken for them.
struct ShellScriptResult
{
    static constexpr int CannotStart = -1;
    static constexpr int AuthorisationDismissed = -2; // the password dialog was closed
    static constexpr int NotAuthorised = -3;          // wrong password or no permission
    static constexpr int Crashed = -4;                // ended by a signal

    int code = 0;
    QString message;

    bool ok() const { return code == 0; }
};

// Knobs for tests; the defaults are what the program uses.
struct ShellScriptOptions
{
    QString shell = QStringLiteral("/bin/sh");
    QString elevator = QStringLiteral("pkexec"); // asks for an administrator's password
    std::optional<bool> alreadyPrivileged;       // unset: whether this process runs as root
    qsizetype outputLimit = 64 * 1024;           // bytes of output kept
};

// Runs a command line through the shell, optionally with administrator rights (through the
// elevator, or directly when already root), and blocks until it ends. Never throws; every failure
// comes back in the result and is logged. Not for the main thread: a password prompt or a format
// can take minutes.
ShellScriptResult runShellScript(const QString& command, bool withAdministratorPrivileges,
                                 const ShellScriptOptions& options = {});

// The same for one program and its arguments, without a shell in between: what is passed cannot
// be read as shell syntax, and the elevator sees the program itself (its own policy applies).
ShellScriptResult runProgramWithRights(const QString& program, const QStringList& arguments,
                                       bool withAdministratorPrivileges,
                                       const ShellScriptOptions& options = {});

} // namespace kavro
