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

/// Tried, because the bits of permission do not tell it everywhere.
bool CanBeWrittenTo(const QString& folder)
{
    return QTemporaryFile(folder + QStringLiteral("/tarno-XXXXXX")).open();
}

/// Copies the data files; the copies can be written even where the originals cannot.
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

/// Makes `userFolder` under another name first, so that no start finds half of it.
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
