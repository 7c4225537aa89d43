#include "DataFolder.h"

#include "core/Error.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTemporaryFile>

namespace Tarno
{

namespace
{

bool HasDataFiles(const QDir& folder)
{
    return folder.exists(QStringLiteral("field.xml"));
}

/// Creates a temporary file, because permission bits are not reliable on every platform.
bool IsWritable(const QString& folder)
{
    return QTemporaryFile(folder + QStringLiteral("/tarno-XXXXXX")).open();
}

/// Copies the data files. The copies are writable even if the originals are read-only.
bool CopyDataFiles(const QDir& from, const QDir& to)
{
    for (const QString& name :
         from.entryList({QStringLiteral("*.xml"), QStringLiteral("*.txt")}, QDir::Files)) {
        const QString copy = to.filePath(name);
        if (!QFile::copy(from.filePath(name), copy) ||
            !QFile::setPermissions(copy, QFile::permissions(copy) | QFileDevice::WriteOwner)) {
            return false;
        }
    }
    return true;
}

/// Fills a temporary folder first and renames it to `userFolder`, so that an incomplete folder is never used.
void CreateUserFolder(const QString& userFolder, const QDir& shipped)
{
    const bool hasParent = QDir().mkpath(QFileInfo(userFolder).path());
    QTemporaryDir temporary(userFolder + QStringLiteral("-XXXXXX"));
    if (!hasParent || !temporary.isValid() || !CopyDataFiles(shipped, QDir(temporary.path())) ||
        !QDir().rename(temporary.path(), userFolder)) {
        throw Error(ErrorNumber::PathFileAccess);
    }
    temporary.setAutoRemove(false);
}

QDir SharedFolder(const QDir& programFolder)
{
    return {programFolder.filePath(QStringLiteral("../share/tarno"))};
}

bool IsInProgramFolder(const QString& programFolder)
{
    const QDir own(programFolder);
    return HasDataFiles(own) ? IsWritable(programFolder) : !HasDataFiles(SharedFolder(own));
}

} // namespace

DataFolder FindDataFolder(const QString& programFolder, const QString& userFolder)
{
    if (IsInProgramFolder(programFolder)) {
        return {programFolder};
    }
    const bool isNew = !QFileInfo::exists(userFolder);
    if (isNew) {
        const QDir own(programFolder);
        CreateUserFolder(userFolder, HasDataFiles(own) ? own : SharedFolder(own));
    }
    return {userFolder, isNew};
}

QString ExistingDataFolder(const QString& programFolder, const QString& userFolder)
{
    if (IsInProgramFolder(programFolder)) {
        return programFolder;
    }
    return QFileInfo::exists(userFolder) ? userFolder : QString();
}

} // namespace Tarno
