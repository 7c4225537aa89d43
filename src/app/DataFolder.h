#pragma once

#include <QString>

namespace Tarno
{

/// The folder with the data files, the pick lists and the log of errors.
struct DataFolder {
    QString path;
    bool isNew = false; ///< the user folder was created by this call
};

/// Returns the data folder of the program in `programFolder`:
/// - `programFolder` if it contains data files and is writable, or if there are no shipped data files at all;
/// - `userFolder` if `programFolder` is read-only or the shipped data files are in ../share/tarno.
/// If `userFolder` does not exist, it is created in one step with copies of the shipped files. Throws Error
/// PathFileAccess if that fails.
DataFolder FindDataFolder(const QString& programFolder, const QString& userFolder);

/// Returns the same folder, but without creating it: an empty text if it does not exist yet.
QString ExistingDataFolder(const QString& programFolder, const QString& userFolder);

} // namespace Tarno
