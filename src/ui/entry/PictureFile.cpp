#include "PictureFile.h"

#include "core/Error.h"

#include <QFileInfo>
#include <QImageReader>

#include <algorithm>
#include <array>

namespace Tarno
{

namespace
{

/// Drawings and what packs others could name further files, or hold more than any memory does: only
/// formats of plain pixels are read.
bool IsOfPixels(const QByteArray& format)
{
    constexpr std::array formats{"bmp", "cur", "gif", "ico", "jpeg", "png", "tiff", "webp"};
    return std::find(formats.begin(), formats.end(), format) != formats.end();
}

} // namespace

QImage ReadPicture(const QString& path)
{
    constexpr int mostMegabytes = 256;
    if (!QFileInfo(path).isFile()) { // reading a device could last for ever
        throw Error(ErrorNumber::InvalidPicture);
    }
    QImageReader::setAllocationLimit(mostMegabytes);
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    const QImage picture = IsOfPixels(reader.format()) ? reader.read() : QImage();
    if (picture.isNull()) {
        throw Error(ErrorNumber::InvalidPicture);
    }
    // what the painter draws fastest
    return picture.convertToFormat(picture.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied
                                                             : QImage::Format_RGB32);
}

} // namespace Tarno
