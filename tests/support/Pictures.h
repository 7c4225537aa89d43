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

// Picture files of every kind the program meets, as bytes.

namespace Pictures
{

/// A picture of `width` by `height` pixels in one colour, but for its upper left quarter, which is red.
inline QImage Drawn(int width, int height, QColor colour = Qt::blue)
{
    QImage picture(width, height, QImage::Format_RGB32);
    picture.fill(colour);
    QPainter(&picture).fillRect(0, 0, width / 2, height / 2, Qt::red);
    return picture;
}

/// `picture` in the file format `format` ("png", "jpg", "tif", ...); the program ends where that is not
/// known.
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

/// `value` in four bytes, the lowest first.
inline std::string Little32(std::uint32_t value)
{
    std::string bytes;
    for (int shift = 0; shift < 32; shift += 8) {
        bytes += static_cast<char>(value >> shift & 0xFF);
    }
    return bytes;
}

/// `value` in four bytes, the highest first.
inline std::string Big32(std::uint32_t value)
{
    const std::string little = Little32(value);
    return {little.rbegin(), little.rend()};
}

/// A JPEG whose camera was held as `orientation` says (1 upright, 6 turned by a quarter to the right, ...).
inline std::string JpegWithOrientation(const QImage& picture, int orientation)
{
    using namespace std::string_literals;
    // one directory of one entry: orientation (0x0112), a 16-bit number, one of them
    const std::string exif = "Exif\0\0II*\0\x08\0\0\0\x01\0\x12\x01\x03\0\x01\0\0\0"s +
                             Little32(static_cast<std::uint32_t>(orientation)) + Little32(0);
    const std::string length{'\0', static_cast<char>(exif.size() + 2)};
    std::string bytes = Encoded(picture, "jpg");
    return bytes.insert(2, "\xFF\xE1" + length + exif); // right behind the start of the picture
}

/// A GIF of one red, then one green pixel.
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
