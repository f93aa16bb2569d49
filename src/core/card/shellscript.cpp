#include "shellscript.h"

#include "cardlog.h"

#include <QProcess>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

namespace kavro {

namespace {

bool runningAsRoot()
{
#ifdef Q_OS_UNIX
    return geteuid() == 0;
#else
    return false;
#endif
}

// Reads the merged output while the command runs, keeping only the last `limit` bytes: a failing
// command says why at the end, and a chatty one must not fill the memory.
QByteArray collectOutput(QProcess& process, qsizetype limit)
{
    QByteArray output;
    bool cut = false;
    auto collect = [&] {
        output += process.readAll();
        if (output.size() > limit) {
            output.remove(0, output.size() - limit);
            cut = true;
        }
    };
    while (process.state() != QProcess::NotRunning) {
        // False with the process still running means its output was closed early or stayed quiet.
        if (!process.waitForReadyRead(200) && process.state() != QProcess::NotRunning)
            process.waitForFinished(200);
        collect();
    }
    collect();
    if (cut)
        output.prepend("...");
    return output;
}

// The elevator's own refusal, told apart from a command that itself ended with 126 or 127 (a
// command not found, for one) by the line the elevator prints.
std::optional<ShellScriptResult> elevatorRefusal(int exitCode, const QString& output)
{
    if ((exitCode != 126 && exitCode != 127) ||
        !output.contains(QLatin1String("Error executing command as another user")))
        return std::nullopt;
    if (exitCode == 126)
        return ShellScriptResult{ShellScriptResult::AuthorisationDismissed,
                                 QStringLiteral("The request for administrator rights was "
                                                "dismissed.")};
    return ShellScriptResult{ShellScriptResult::NotAuthorised,
                             QStringLiteral("Administrator rights were not granted.")};
}

ShellScriptResult run(QString program, QStringList arguments, bool elevate,
                      const ShellScriptOptions& options)
{
    if (elevate) {
        arguments.prepend(program);
        program = options.elevator;
    }

    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    if (!process.waitForStarted(-1)) {
        return {ShellScriptResult::CannotStart,
                QStringLiteral("Cannot run %1: %2").arg(program, process.errorString())};
    }
    process.closeWriteChannel();
    QString output = QString::fromLocal8Bit(collectOutput(process, options.outputLimit)).trimmed();

    if (process.exitStatus() != QProcess::NormalExit) {
        QString why = QStringLiteral("The command was ended abnormally.");
        return {ShellScriptResult::Crashed, output.isEmpty() ? why : output};
    }
    int exitCode = process.exitCode();
    if (exitCode == 0)
        return {};
    if (elevate) {
        if (std::optional<ShellScriptResult> refusal = elevatorRefusal(exitCode, output)) {
            qCDebug(lcCard) << options.elevator << "said:" << output;
            return *refusal;
        }
    }
    if (output.isEmpty())
        output = QStringLiteral("The command ended with status %1.").arg(exitCode);
    return {exitCode, output};
}

} // namespace

ShellScriptResult runShellScript(const QString& command, bool withAdministratorPrivileges,
                                 const ShellScriptOptions& options)
{
    return runProgramWithRights(options.shell, {QStringLiteral("-c"), command},
                                withAdministratorPrivileges, options);
}

ShellScriptResult runProgramWithRights(const QString& program, const QStringList& arguments,
                                       bool withAdministratorPrivileges,
                                       const ShellScriptOptions& options)
{
    bool elevate =
        withAdministratorPrivileges && !options.alreadyPrivileged.value_or(runningAsRoot());
    ShellScriptResult result = run(program, arguments, elevate, options);
    if (!result.ok())
        qCWarning(lcCard).nospace()
            << "ERROR={code=" << result.code << ", message=" << result.message << "}";
    return result;
}

} // namespace kavro
