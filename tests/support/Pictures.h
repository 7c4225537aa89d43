#pragma once

#include <QBuffer>
#include <QByteArray>
#include <QImage>
#include <QImageWriter>
#include <QPainter>

#include <cstdint>
#include <string>

namespace Tarno
{

// The bytes of picture files in all supported formats.

namespace Pictures
{

/// Returns a picture of `width` by `height` pixels in `colour`, with a red upper left quarter.
inline QImage Drawn(int width, int height, QColor colour = Qt::blue)
{
    QImage picture(width, height, QImage::Format_RGB32);
    picture.fill(colour);
    QPainter(&picture).fillRect(0, 0, width / 2, height / 2, Qt::red);
    return picture;
}

/// Encodes `picture` in `format` ("png", "jpg", "tif", ...). Aborts if the format is not supported.
inline std::string Encoded(const QImage& picture, const char* format)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QImageWriter writer(&buffer, format);
    writer.setQuality(95);
    if (!writer.write(picture)) {
        qFatal("cannot write %s: %s", format, qPrintable(writer.errorString()));
    }
    return bytes.toStdString();
}

inline std::string Png(int width, int height)
{
    return Encoded(Drawn(width, height), "png");
}

/// Returns `value` as four bytes, little endian.
inline std::string Little32(std::uint32_t value)
{
    std::string bytes;
    for (int shift = 0; shift < 32; shift += 8) {
        bytes += static_cast<char>(value >> shift & 0xFF);
    }
    return bytes;
}

/// Returns `value` as four bytes, big endian.
inline std::string Big32(std::uint32_t value)
{
    const std::string little = Little32(value);
    return {little.rbegin(), little.rend()};
}

/// Returns a JPEG with the EXIF orientation `orientation` (1 upright, 6 rotated by 90 degrees clockwise,
/// ...).
inline std::string JpegWithOrientation(const QImage& picture, int orientation)
{
    using namespace std::string_literals;
    // one directory with one entry: orientation (0x0112), type 16-bit number, count 1
    const std::string exif = "Exif\0\0II*\0\x08\0\0\0\x01\0\x12\x01\x03\0\x01\0\0\0"s +
                             Little32(static_cast<std::uint32_t>(orientation)) + Little32(0);
    const std::string length{'\0', static_cast<char>(exif.size() + 2)};
    std::string bytes = Encoded(picture, "jpg");
    return bytes.insert(2, "\xFF\xE1" + length + exif); // after the start-of-image marker
}

/// Returns an animated GIF of one pixel, red and then green.
inline std::string AnimatedGif()
{
    using namespace std::string_literals;
    const std::string header = "GIF89a\x01\0\x01\0\x80\0\0\xFF\0\0\0\xFF\0"s; // two colours: red, green
    const auto frame = [](char pixel) {
        return "!\xF9\x04\0\x0A\0\0\0,\0\0\0\0\x01\0\x01\0\0\x02\x02"s + pixel + "\x01\0"s;
    };
    return header + frame('\x44') + frame('\x4C') + ";";
}

} // namespace Pictures

} // namespace Tarno
