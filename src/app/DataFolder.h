#pragma once

#include <QString>

namespace Tarno
{

/// The folder with the data files, the pick lists and the log of errors.
struct DataFolder {
    QString path;
    bool isNew = false; ///< the user's own, made just now
};

/// Finds the folder for a program that lies in `programFolder`. That folder itself serves when the program
/// brings its data files there and they may be written. A program that cannot be written to, or one whose
/// files lie in ../share/tarno, keeps its data in `userFolder`. That is made and filled with the files that
/// the program brings when it is not there yet; it is there whole or not at all. A program that brings no
/// files uses its own folder. Throws Error PathFileAccess when the user's folder cannot be made.
DataFolder FindDataFolder(const QString& programFolder, const QString& userFolder);

} // namespace Tarno
