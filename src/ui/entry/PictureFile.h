#pragma once

#include <QImage>
#include <QString>

namespace Tarno
{

/// The picture in the file at `path`, upright, in a form that is drawn fast; an animation gives its first
/// frame. The format is told by the contents, not by the name.
/// Throws Error InvalidPicture when it is no ordinary file, cannot be read or decoded, is no BMP, GIF, ICO,
/// JPEG, PNG, TIFF or WebP, or would take more than 256 MB, which a picture of 64 megapixels does.
QImage ReadPicture(const QString& path);

} // namespace Tarno
