#include "PictureFile.h"

#include "core/Error.h"
#include "qt/Strings.h"

#include <QDir>
#include <QFileInfo>
#include <QImageReader>

#include <algorithm>
#include <array>

namespace Tarno
{

namespace
{

/// Whether `format` is a raster format that is safe to read. Vector drawings and compressed drawings can
/// refer to other files or expand without limit.
bool IsRasterFormat(const QByteArray& format)
{
    constexpr std::array formats{"bmp", "cur", "gif", "ico", "jpeg", "png", "tiff", "webp"};
    return std::find(formats.begin(), formats.end(), format) != formats.end();
}

} // namespace

QString PicturePath(const ProgramFolder& folder, std::string_view stored)
{
    return stored.empty() ? QString() : QDir(FromUtf8(folder.GetAppPath() + '/')).filePath(FromUtf8(stored));
}

QImage ReadPicture(const QString& path)
{
    constexpr int mostMegabytes = 256;
    if (!QFileInfo(path).isFile()) { // reading a device could block forever
        throw Error(ErrorNumber::InvalidPicture);
    }
    QImageReader::setAllocationLimit(mostMegabytes);
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    const QImage picture = IsRasterFormat(reader.format()) ? reader.read() : QImage();
    if (picture.isNull()) {
        throw Error(ErrorNumber::InvalidPicture);
    }
    // the formats that QPainter draws fastest
    return picture.convertToFormat(picture.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied
                                                             : QImage::Format_RGB32);
}

PictureOrProblem TryReadPicture(const QString& path)
{
    if (path.isEmpty()) {
        return {};
    }
    if (!QFileInfo::exists(path)) {
        return {{}, QStringLiteral("The picture does not exist: ") + path};
    }
    try {
        return {ReadPicture(path), {}};
    } catch (const Error&) {
        return {{}, QStringLiteral("The picture cannot be read: ") + path};
    }
}

} // namespace Tarno
