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

bool HoldsDataFiles(const QDir& folder)
{
    return folder.exists(QStringLiteral("field.xml"));
}

/// Creates a temporary file, because permission bits are not reliable on every platform.
bool CanBeWrittenTo(const QString& folder)
{
    return QTemporaryFile(folder + QStringLiteral("/tarno-XXXXXX")).open();
}

/// Copies the data files. The copies are writable even if the originals are read-only.
bool Fill(const QDir& from, const QDir& to)
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
void Make(const QString& userFolder, const QDir& shipped)
{
    const bool hasParent = QDir().mkpath(QFileInfo(userFolder).path());
    QTemporaryDir half(userFolder + QStringLiteral("-XXXXXX"));
    if (!hasParent || !half.isValid() || !Fill(shipped, QDir(half.path())) ||
        !QDir().rename(half.path(), userFolder)) {
        throw Error(ErrorNumber::PathFileAccess);
    }
    half.setAutoRemove(false);
}

} // namespace

DataFolder FindDataFolder(const QString& programFolder, const QString& userFolder)
{
    const QDir own(programFolder);
    const QDir shared(own.filePath(QStringLiteral("../share/tarno")));
    const bool bringsOwn = HoldsDataFiles(own);
    if ((bringsOwn && CanBeWrittenTo(programFolder)) || (!bringsOwn && !HoldsDataFiles(shared))) {
        return {programFolder};
    }
    const bool isNew = !QFileInfo::exists(userFolder);
    if (isNew) {
        Make(userFolder, bringsOwn ? own : shared);
    }
    return {userFolder, isNew};
}

} // namespace Tarno
