#include "platform/forms/text_editor.h"

#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <functional>
#include <optional>

#include "platform/forms/qt_text.h"
#include "platform/names/uri_list.h"

namespace vantrel {
namespace {

constexpr qint64 kMostBytes = 4 << 20;  // of a file of the desktop; larger ones are damaged

// Calls `take` for each "key=value" of one group of a file; false from it ends the reading.
void ReadGroup(const QString& path, const QString& group,
               const std::function<bool(const QString& key, const QString& value)>& take) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return;
    bool inside = false;
    for (const QByteArray& bytes : file.read(kMostBytes).split('\n')) {
        const QString line = QString::fromUtf8(bytes).trimmed();
        if (line.startsWith(QLatin1Char('['))) {
            inside = line == QLatin1Char('[') + group + QLatin1Char(']');
            continue;
        }
        const qsizetype equals = line.indexOf(QLatin1Char('='));
        if (!inside || equals < 1 || line.startsWith(QLatin1Char('#'))) continue;
        if (!take(line.left(equals).trimmed(), line.mid(equals + 1).trimmed())) return;
    }
}

// The programs that a list names for plain text.
QStringList ProgramsIn(const QString& path, const QString& group) {
    QStringList programs;
    ReadGroup(path, group, [&](const QString& key, const QString& value) {
        if (key != QStringLiteral("text/plain")) return true;
        programs = value.split(QLatin1Char(';'), Qt::SkipEmptyParts);
        return false;
    });
    return programs;
}

// An Exec line in its arguments: blanks part them, double quotes hold them together.
QStringList Arguments(const QString& exec) {
    QStringList arguments;
    QString argument;
    bool quoted = false;
    bool begun = false;
    for (qsizetype at = 0; at < exec.size(); ++at) {
        QChar letter = exec[at];
        if (letter == QLatin1Char('"')) {
            quoted = !quoted;
            begun = true;
            continue;
        }
        if (letter == QLatin1Char('\\') && quoted && at + 1 < exec.size()) letter = exec[++at];
        if (letter.isSpace() && !quoted) {
            if (begun) arguments.append(argument);
            argument.clear();
            begun = false;
            continue;
        }
        argument.append(letter);
        begun = true;
    }
    if (begun) arguments.append(argument);
    return arguments;
}

// The argument that stands for the file; nothing for a code that stands for something else.
std::optional<QString> Filled(const QString& argument, const QString& file, const QString& uri) {
    if (argument == QStringLiteral("%f") || argument == QStringLiteral("%F")) return file;
    if (argument == QStringLiteral("%u") || argument == QStringLiteral("%U")) return uri;
    if (argument.size() == 2 && argument[0] == QLatin1Char('%') && argument[1].isLetter())
        return std::nullopt;
    return QString(argument).replace(QStringLiteral("%%"), QStringLiteral("%"));
}

struct Program {
    QString exec;
    bool usable = true;
};

Program ReadProgram(const QString& path) {
    Program program;
    ReadGroup(path, QStringLiteral("Desktop Entry"), [&](const QString& key, const QString& value) {
        const bool isTrue = value == QStringLiteral("true");
        if (key == QStringLiteral("Exec")) program.exec = value;
        if (isTrue && (key == QStringLiteral("Terminal") || key == QStringLiteral("Hidden")))
            program.usable = false;
        return true;
    });
    return program;
}

// The command of one program by the name of its file; empty where it is not there or will not do.
QStringList CommandOf(const DesktopFolders& folders, const QString& name, const std::string& path) {
    // A name stands for a file in the folder itself, or in one below it, whose "/" became "-".
    for (const QString& folder : folders.applications) {
        QString file = folder + QLatin1Char('/') + name;
        if (!QFileInfo::exists(file)) {
            const qsizetype dash = name.indexOf(QLatin1Char('-'));
            if (dash < 1) continue;
            file[folder.size() + 1 + dash] = QLatin1Char('/');
            if (!QFileInfo::exists(file)) continue;
        }
        const Program program = ReadProgram(file);
        const QStringList arguments = Arguments(program.exec);
        if (!program.usable || arguments.isEmpty()) return {};
        const QString executable = QStandardPaths::findExecutable(arguments.first());
        if (executable.isEmpty()) return {};
        QStringList command{executable};
        const QString uri = QString::fromStdString(FileUri(path));
        // A name that is no valid text can only be told as an address.
        const QString shown = DialogPath(path);
        const QString native = FromDialogPath(shown) == path ? shown : uri;
        for (const QString& argument : arguments.mid(1))
            if (const auto filled = Filled(argument, native, uri)) command.append(*filled);
        if (!command.contains(native) && !command.contains(uri)) command.append(native);
        return command;
    }
    return {};
}

QStringList FoldersIn(const char* variable, const QString& standard, const QString& below) {
    QString list = qEnvironmentVariable(variable);
    if (list.isEmpty()) list = standard;
    QStringList folders;
    for (const QString& folder : list.split(QLatin1Char(':'), Qt::SkipEmptyParts))
        if (folder.startsWith(QLatin1Char('/'))) folders.append(folder + below);
    return folders;
}

}  // namespace

DesktopFolders DesktopFolders::OfThisUser() {
    const QString home = qEnvironmentVariable("HOME");
    const QString applications = QStringLiteral("/applications");
    DesktopFolders folders;
    folders.settings = FoldersIn("XDG_CONFIG_HOME", home + QStringLiteral("/.config"), {}) +
                       FoldersIn("XDG_CONFIG_DIRS", QStringLiteral("/etc/xdg"), {});
    folders.applications =
        FoldersIn("XDG_DATA_HOME", home + QStringLiteral("/.local/share"), applications) +
        FoldersIn("XDG_DATA_DIRS", QStringLiteral("/usr/local/share:/usr/share"), applications);
    folders.desktops =
        qEnvironmentVariable("XDG_CURRENT_DESKTOP").toLower().split(QLatin1Char(':'), Qt::SkipEmptyParts);
    return folders;
}

QStringList TextEditorCommand(const DesktopFolders& folders, const std::string& path) {
    QStringList lists;
    for (const QString& folder : folders.settings + folders.applications) {
        for (const QString& desktop : folders.desktops)
            lists.append(folder + QLatin1Char('/') + desktop + QStringLiteral("-mimeapps.list"));
        lists.append(folder + QStringLiteral("/mimeapps.list"));
    }
    QStringList programs;
    for (const char* group : {"Default Applications", "Added Associations"})
        for (const QString& list : lists) programs += ProgramsIn(list, QLatin1String(group));
    for (const QString& folder : folders.applications)
        programs += ProgramsIn(folder + QStringLiteral("/mimeinfo.cache"), QStringLiteral("MIME Cache"));
    for (const QString& program : programs) {
        QStringList command = CommandOf(folders, program, path);
        if (!command.isEmpty()) return command;
    }
    return {};
}

}  // namespace vantrel
