#include "EntryTest.h"
#include "support/PeakMemory.h"
#include "support/Pictures.h"
#include "support/Platform.h"
#include "support/RaisedNumber.h"
#include "support/TestClass.h"
#include "support/UnprivilegedUser.h"
#include "ui/entry/PictureFile.h"

#include <QScrollBar>
#include <QSlider>

#ifndef Q_OS_WIN
#include <unistd.h>
#endif

using namespace Tarno;

// Malicious and damaged picture files. The editor either shows a picture or reports a problem, and remains
// usable. If reading a file does not end, the test program is terminated.

namespace
{

using namespace std::string_literals;

/// Terminates the test program after a timeout. On Windows only the time limit of the test applies.
class HangGuard
{
public:
    HangGuard() { EndAfter(100); }

    HangGuard(const HangGuard&) = delete;
    HangGuard& operator=(const HangGuard&) = delete;

    ~HangGuard() { EndAfter(0); }

private:
    static void EndAfter([[maybe_unused]] unsigned seconds)
    {
#ifndef Q_OS_WIN
        ::alarm(seconds);
#endif
    }
};

bool IsReadable(const std::string& path)
{
    const HangGuard guard;
    const int raised = RaisedNumber([&] { ReadPicture(FromUtf8(path)); });
    return raised == 0;
}

/// Opens an entry with the picture `path`, zooms and scrolls the picture, and closes the entry. `readable` is
/// whether the picture is expected to be shown.
void ShowWithEntry(ProgramWithPlace& program, const std::string& path, bool readable)
{
    const HangGuard guard;
    if (!readable) {
        program.messages.ExpectInformation(
            QStringLiteral("There is a problem with the image you are tring to load. It could be:\r\n"
                           "   - that the image is too large when opened (filesize)\r\n"
                           "   - you do not have sufficient memory to handle the iamge\r\n"
                           "   - you need to close other applications which are open"),
            QStringLiteral("Picture Problem"));
    }
    const int key = program.AddCompleteEntry({{EntryField::Picture, path}});
    Edit(program, key, [&](QDialog& editor) {
        ShowPageOf(editor, Find<QWidget>(editor, "frPic"));
        QCOMPARE(Find<QWidget>(editor, "cmdRemove").isEnabled(), readable);
        QCOMPARE(Find<QWidget>(editor, "cmdLoad").isEnabled(), !readable);
        for (const int zoom : {100, 50, 1, 0}) {
            Find<QSlider>(editor, "sldZoom").setValue(zoom);
            Find<QScrollBar>(editor, "vscPic").setValue(20);
            QVERIFY(!Find<QWidget>(editor, "frPic").grab().isNull());
        }
        Close(editor);
    });
    QCOMPARE(program.StoredEntry(key, EntryField::Picture), path);
}

std::uint32_t Crc(const std::string& bytes)
{
    std::uint32_t crc = 0xFFFFFFFF;
    for (const char byte : bytes) {
        crc ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit) {
            crc = (crc >> 1) ^ ((crc & 1) != 0 ? 0xEDB88320 : 0);
        }
    }
    return ~crc;
}

/// Returns a valid PNG, except that its header claims another size.
std::string PngClaiming(std::uint32_t width, std::uint32_t height)
{
    std::string bytes = Pictures::Png(8, 8);
    const std::string header =
        "IHDR" + Pictures::Big32(width) + Pictures::Big32(height) + bytes.substr(24, 5);
    return bytes.replace(12, header.size() + 4, header + Pictures::Big32(Crc(header)));
}

std::string BmpClaiming(std::uint32_t width, std::uint32_t height)
{
    std::string bytes = Pictures::Encoded(Pictures::Drawn(8, 8), "bmp");
    return bytes.replace(18, 8, Pictures::Little32(width) + Pictures::Little32(height));
}

std::string GifClaiming(std::uint32_t width, std::uint32_t height)
{
    const std::string size = Pictures::Little32(width).substr(0, 2) + Pictures::Little32(height).substr(0, 2);
    std::string bytes = Pictures::AnimatedGif();
    const std::size_t frame = bytes.find(',');
    bytes.replace(frame + 5, 4, size);
    return bytes.replace(6, 4, size);
}

std::string JpegClaiming(std::uint32_t width, std::uint32_t height)
{
    std::string bytes = Pictures::Encoded(Pictures::Drawn(8, 8), "jpg");
    const std::size_t frame = bytes.find("\xFF\xC0"s);
    return bytes.replace(frame + 5, 4, Pictures::Big32(height).substr(2) + Pictures::Big32(width).substr(2));
}

/// Returns a TIFF with the given directory after its header.
std::string Tiff(const std::string& directory)
{
    return "II*\0\x08\0\0\0"s + directory;
}

/// Returns a TIFF directory entry with one 32-bit number, or with `count` numbers at the offset `value`.
std::string TiffEntry(int tag, std::uint32_t value, std::uint32_t count = 1)
{
    return Pictures::Little32(static_cast<std::uint32_t>(tag)).substr(0, 2) + "\x04\0"s +
           Pictures::Little32(count) + Pictures::Little32(value);
}

/// Returns an icon file that claims `count` pictures at `offset`.
std::string Ico(int count, std::uint32_t offset)
{
    const std::string entry =
        "\x10\x10\0\0\x01\0\x20\0"s + Pictures::Little32(0x7FFFFFFF) + Pictures::Little32(offset);
    return "\0\0\x01\0"s + static_cast<char>(count & 0xFF) + static_cast<char>(count >> 8) + entry;
}

/// Returns a picture with one bit per pixel, which is small in the file and when decoded, but large when
/// converted for painting.
std::string LargeOneBitPng()
{
    QImage picture(20000, 20000, QImage::Format_Mono);
    picture.fill(0);
    return Pictures::Encoded(picture, "png");
}

} // namespace

class tst_HostilePictures : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void notAPicture_isAProblem_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        const auto add = [](const char* name, const std::string& bytes) {
            QTest::newRow(name) << QByteArray::fromStdString(bytes);
        };
        add("nothing", "");
        add("one byte", "x");
        add("text", "This is not a picture.\r\n");
        add("zeros", std::string(100000, '\0'));
        add("markup", "<?xml version=\"1.0\"?><data/>");
        add("start of a PNG", "\x89PNG\r\n\x1A\n");
        add("start of a JPEG", "\xFF\xD8\xFF");
        add("start of a GIF", "GIF89a");
        add("start of a BMP", "BM");
        add("start of a TIFF", "II*\0"s);
        add("start of an ICO", "\0\0\x01\0"s);
        add("PNG of 60000 x 60000", PngClaiming(60000, 60000));
        add("PNG of 2147483647 x 2147483647", PngClaiming(0x7FFFFFFF, 0x7FFFFFFF));
        add("PNG of 0 x 0", PngClaiming(0, 0));
        add("PNG with one bit per pixel", LargeOneBitPng());
        add("BMP of 60000 x 60000", BmpClaiming(60000, 60000));
        add("BMP of 60000 x -60000", BmpClaiming(60000, static_cast<std::uint32_t>(-60000)));
        add("BMP of 0 x 0", BmpClaiming(0, 0));
        add("BMP of -1 x 2147483648", BmpClaiming(0xFFFFFFFF, 0x80000000));
        add("GIF of 60000 x 60000", GifClaiming(60000, 60000));
        add("JPEG of 65500 x 65500", JpegClaiming(65500, 65500));
        add("JPEG of 0 x 0", JpegClaiming(0, 0));
        add("TIFF whose directory is after the end", "II*\0\xFF\xFF\xFF\x7F"s);
        add("TIFF without an entry", Tiff("\0\0"s + Pictures::Little32(0)));
        add("TIFF with a directory cycle", Tiff("\0\0"s + Pictures::Little32(8)));
        add("TIFF of 60000 x 60000", Tiff("\x04\0"s + TiffEntry(256, 60000) + TiffEntry(257, 60000) +
                                          TiffEntry(273, 8) + TiffEntry(279, 10) + Pictures::Little32(0)));
        add("TIFF with a billion strips",
            Tiff("\x04\0"s + TiffEntry(256, 8) + TiffEntry(257, 8) + TiffEntry(273, 8, 0x7FFFFFFF) +
                 TiffEntry(279, 8, 0x7FFFFFFF) + Pictures::Little32(0)));
        add("ICO whose picture is after the end", Ico(1, 0x7FFFFFF0));
        add("ICO of 65535 pictures", Ico(65535, 22));
        add("ICO that refers to itself", Ico(1, 0));
    }

    void notAPicture_isAProblem()
    {
        QFETCH(QByteArray, bytes);
        ProgramWithPlace program;
        program.folder.Write("catch.jpg", bytes.toStdString());
        QVERIFY(!IsReadable(program.folder.PathOf("catch.jpg")));
        ShowWithEntry(program, program.folder.PathOf("catch.jpg"), false);
    }

    void truncatedPicture_isShownOrAProblem_data()
    {
        QTest::addColumn<QString>("format");
        for (const char* format : {"png", "jpg", "bmp", "tif", "ico", "gif"}) {
            QTest::newRow(format) << format;
        }
    }

    void truncatedPicture_isShownOrAProblem()
    {
        QFETCH(QString, format);
        const std::string whole = format == QLatin1String("gif")
                                      ? Pictures::AnimatedGif()
                                      : Pictures::Encoded(Pictures::Drawn(200, 150), format.toLatin1());
        ProgramWithPlace program;
        const std::string path = program.folder.PathOf("catch.png");
        program.folder.Write("catch.png", whole);
        ShowWithEntry(program, path, true);
        for (const std::size_t percent : {1, 5, 20, 50, 80, 95, 99}) {
            program.folder.Write("catch.png", whole.substr(0, whole.size() * percent / 100));
            ShowWithEntry(program, path, IsReadable(path));
        }
        program.folder.Write("catch.png", whole.substr(0, 12));
        ShowWithEntry(program, path, false);
    }

    void damagedPicture_isShownOrAProblem_data() { truncatedPicture_isShownOrAProblem_data(); }

    /// Changes one byte in seventeen in the whole file, including the headers.
    void damagedPicture_isShownOrAProblem()
    {
        QFETCH(QString, format);
        const std::string whole = format == QLatin1String("gif")
                                      ? Pictures::AnimatedGif()
                                      : Pictures::Encoded(Pictures::Drawn(40, 30), format.toLatin1());
        ProgramWithPlace program;
        const std::string path = program.folder.PathOf("catch.png");
        for (std::size_t first = 0; first < 17; ++first) {
            std::string damaged = whole;
            for (std::size_t place = first; place < damaged.size(); place += 17) {
                damaged[place] = static_cast<char>(~damaged[place]);
            }
            program.folder.Write("catch.png", damaged);
            ShowWithEntry(program, path, IsReadable(path));
        }
    }

    void device_isAProblem()
    {
        NOT_ON_WINDOWS("devices among the files");
        ProgramWithPlace program;
        QVERIFY(!IsReadable("/dev/zero"));
        ShowWithEntry(program, "/dev/zero", false);
    }

    void pipe_isAProblem()
    {
        NOT_ON_WINDOWS("pipes");
        ProgramWithPlace program;
        program.folder.MakePipe("catch.jpg");
        QVERIFY(!IsReadable(program.folder.PathOf("catch.jpg")));
        ShowWithEntry(program, program.folder.PathOf("catch.jpg"), false);
    }

    void unreadableFile_isAProblem()
    {
        ProgramWithPlace program;
        program.folder.Write("catch.png", Pictures::Png(20, 10));
        std::filesystem::permissions(program.folder.PathOf("catch.png"), std::filesystem::perms::none);
        const UnprivilegedUser user(program.folder);
        if (!UnprivilegedUser::IsUnprivileged()) {
            QSKIP(UnprivilegedUser::skipReason);
        }
        ShowWithEntry(program, program.folder.PathOf("catch.png"), false);
    }

    void drawing_thatRefersToAPipe_isAProblem()
    {
        NOT_ON_WINDOWS("pipes");
        ProgramWithPlace program;
        program.folder.MakePipe("pipe.png");
        program.folder.Write("catch.png",
                             "<?xml version=\"1.0\"?><svg xmlns=\"http://www.w3.org/2000/svg\" "
                             "xmlns:xlink=\"http://www.w3.org/1999/xlink\" width=\"9\" height=\"9\">"
                             "<image width=\"9\" height=\"9\" xlink:href=\"" +
                                 program.folder.PathOf("pipe.png") + "\"/></svg>");
        QVERIFY(!IsReadable(program.folder.PathOf("catch.png")));
        ShowWithEntry(program, program.folder.PathOf("catch.png"), false);
    }

    /// A compressed drawing could exhaust the memory when it is decompressed.
    void compressedDrawing_isAProblem()
    {
        ProgramWithPlace program;
        QByteArray packed =
            qCompress(QByteArray("<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'>") +
                      QByteArray(20'000'000, ' ') + "</svg>");
        // replaces header and trailer of zlib by those of gzip
        packed =
            QByteArray("\x1F\x8B\x08\0\0\0\0\0\0\x03", 10) + packed.mid(6).chopped(4) + QByteArray(8, '\0');
        program.folder.Write("catch.png", packed.toStdString());
        QVERIFY(!IsReadable(program.folder.PathOf("catch.png")));
        ShowWithEntry(program, program.folder.PathOf("catch.png"), false);
    }

    /// Checks that no file needed much more memory than a picture of the maximum size.
    void cleanupTestCase() { QVERIFY2(PeakMegabytes() < 1000, qPrintable(QString::number(PeakMegabytes()))); }
};

TEST_CLASS(tst_HostilePictures)
#include "tst_HostilePictures.moc"
