#pragma once

#include "core/ProgramFolder.h"

#include <QImage>
#include <QString>

#include <string_view>

namespace Tarno
{

/// Returns the full path of a picture that a record refers to by `stored`, a full path or one relative to the
/// data folder. Returns an empty text if `stored` is empty.
QString PicturePath(const ProgramFolder& folder, std::string_view stored);

/// Reads the picture in the file at `path`, rotated by its orientation tag. Of an animation, returns the
/// first frame. The format is detected from the contents, not from the file name. Throws Error InvalidPicture
/// if the file is not a regular file, cannot be read or decoded, is not a BMP, GIF, ICO, JPEG, PNG, TIFF or
/// WebP, or needs more than 256 MB of memory (64 megapixels).
QImage ReadPicture(const QString& path);

/// A picture, or why there is none.
struct PictureOrProblem {
    QImage picture;
    QString problem; ///< a sentence for the user; empty if there is a picture or no path
};

/// Like ReadPicture, for a picture that is not essential: explains the problem instead of throwing.
PictureOrProblem TryReadPicture(const QString& path);

} // namespace Tarno
