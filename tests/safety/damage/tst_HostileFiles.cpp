#include "EveryOperation.h"
#include "support/Platform.h"
#include "support/TestClass.h"
#include "support/UnprivilegedUser.h"

using namespace Tarno;

// Replaces each of the seven data files in turn by an invalid file, by an unusual but valid file, or by
// something other than a regular file, and runs the operations.

using namespace std::string_literals;

namespace
{

/// What must happen with a malformed or unusual file.
enum class ExpectedResult {
    Refused,    ///< operations that need it fail, and its bytes do not change
    Read,       ///< all operations succeed
    PartlyRead, ///< something before its root hides its records from lists and new keys; it stays well-formed
};

struct FileVariant {
    std::string name;
    ExpectedResult expected;
    std::function<std::string(const std::string& valid)> make;
};

std::string Replaced(std::string text, const std::string& from, const std::string& to)
{
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) {
        text.replace(at, from.size(), to);
    }
    return text;
}

/// Returns the file with `text` inserted into its first value.
std::string WithValue(std::string file, const std::string& text)
{
    return file.insert(file.find("</"), text);
}

/// Returns the file with `element` after the last value of its first record.
std::string WithElement(std::string file, const std::string& element)
{
    return file.insert(file.find("\n\t</"), element);
}

/// Returns the file with `levels` levels of elements.
std::string Nested(const std::string& file, int levels)
{
    std::string begin;
    std::string end;
    for (int level = 3; level <= levels; ++level) { // the root and the record are two
        begin += "<x>";
        end += "</x>";
    }
    return WithElement(file, begin + end);
}

enum class ByteOrder { LittleEndian, BigEndian };

std::string Utf16(const std::string& ascii, ByteOrder order)
{
    std::string bytes;
    for (const char letter : ascii) {
        bytes += order == ByteOrder::LittleEndian ? std::string{letter, '\0'} : std::string{'\0', letter};
    }
    return bytes;
}

/// Returns a document type whose last entity expands to a billion words.
std::string NestedEntities()
{
    std::string type = "<!DOCTYPE data [<!ENTITY a0 \"lol\">";
    for (int level = 1; level < 10; ++level) {
        type += "<!ENTITY a" + std::to_string(level) + " \"";
        for (int word = 0; word < 10; ++word) {
            type += "&a" + std::to_string(level - 1) + ";";
        }
        type += "\">";
    }
    return type + "]>";
}

const std::vector<FileVariant>& FileVariants()
{
    using enum ExpectedResult;
    using Text = const std::string&;
    static const std::vector<FileVariant> all{
        {"zeros", Refused, [](Text valid) { return std::string(valid.size(), '\0'); }},
        {"zeros at the start", Refused, [](Text valid) { return std::string(512, '\0') + valid; }},
        {"zeros at the end", Refused,
         [](Text valid) { return valid.substr(0, valid.size() - 50) + std::string(50, '\0'); }},
        {"empty", Refused, [](Text) { return ""s; }},
        {"one blank", Refused, [](Text) { return " "s; }},
        {"a line end", Refused, [](Text) { return "\n"s; }},
        {"only a UTF-8 byte order mark", Refused, [](Text) { return "\xEF\xBB\xBF"s; }},
        {"only a UTF-16 byte order mark", Refused, [](Text) { return "\xFF\xFE"s; }},
        {"two roots", Refused, [](Text valid) { return valid + valid; }},
        {"a second, empty root", Refused, [](Text valid) { return valid + "<data/>"; }},
        {"text before the root", Refused, [](Text valid) { return "x" + valid; }},
        {"text after the root", Refused, [](Text valid) { return valid + "x"; }},
        {"a reference after the root", Refused, [](Text valid) { return valid + "&amp;"; }},
        {"a CDATA section after the root", Refused, [](Text valid) { return valid + "<![CDATA[]]>"; }},
        {"another root", Refused, [](Text valid) { return Replaced(valid, "data>", "dato>"); }},
        {"a prefixed root", Refused, [](Text valid) { return Replaced(valid, "data>", "t:data>"); }},
        {"mismatched end tags", Refused, [](Text valid) { return Replaced(valid, "</", "</X"); }},
        {"Latin-1", Refused, [](Text valid) { return WithValue(valid, "\xE9"); }},
        {"declared Latin-1", Refused,
         [](Text valid) {
             return "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n" + WithValue(valid, "\xE9");
         }},
        {"overlong UTF-8", Refused, [](Text valid) { return WithValue(valid, "\xC0\xAF"); }},
        {"a surrogate", Refused, [](Text valid) { return WithValue(valid, "\xED\xA0\x80"); }},
        {"UTF-16 little-endian without a mark", Refused,
         [](Text valid) { return Utf16(valid, ByteOrder::LittleEndian); }},
        {"UTF-16 big-endian without a mark", Refused,
         [](Text valid) { return Utf16(valid, ByteOrder::BigEndian); }},
        {"UTF-16 with the wrong mark", Refused,
         [](Text valid) { return "\xFE\xFF" + Utf16(valid, ByteOrder::LittleEndian); }},
        {"half a UTF-16 unit", Refused,
         [](Text valid) { return "\xFF\xFE" + Utf16(valid, ByteOrder::LittleEndian) + "\n"; }},
        {"UTF-32", Refused,
         [](Text valid) {
             return "\xFF\xFE\0\0"s + Utf16(Utf16(valid, ByteOrder::LittleEndian), ByteOrder::LittleEndian);
         }},
        {"257 levels", Refused, [](Text valid) { return Nested(valid, 257); }},
        {"200,000 levels", Refused, [](Text valid) { return Nested(valid, 200'000); }},
        {"200,000 start tags", Refused,
         [](Text) {
             std::string tags;
             for (int level = 0; level < 200'000; ++level) {
                 tags += "<data>";
             }
             return tags;
         }},
        {"an entity that expands to a billion words", Refused,
         [](Text valid) { return NestedEntities() + WithValue(valid, "&a9;"); }},
        {"an external entity", Refused,
         [](Text valid) {
             return "<!DOCTYPE data [<!ENTITY a SYSTEM \"file:///etc/passwd\">]>" + WithValue(valid, "&a;");
         }},
        {"an unfinished document type", Refused,
         [](Text valid) { return "<!DOCTYPE data [<!ENTITY a \"" + valid; }},
        {"a web page", Refused,
         [](Text) { return "<!DOCTYPE html><html><body>Log in to this network</body></html>"s; }},
        {"a compressed file", Refused, [](Text valid) { return "PK\x03\x04" + valid; }},
        {"merge conflict markers", Refused,
         [](Text valid) { return "<<<<<<< mine\n" + valid + "=======\n" + valid + ">>>>>>> theirs\n"; }},

        {"UTF-8 with a mark", Read, [](Text valid) { return "\xEF\xBB\xBF" + valid; }},
        {"UTF-16 little-endian", Read,
         [](Text valid) { return "\xFF\xFE" + Utf16(valid, ByteOrder::LittleEndian); }},
        {"UTF-16 big-endian", Read,
         [](Text valid) { return "\xFE\xFF" + Utf16(valid, ByteOrder::BigEndian); }},
        {"64 levels", Read, [](Text valid) { return Nested(valid, 64); }},
        {"256 levels", Read, [](Text valid) { return Nested(valid, 256); }},
        {"a comment after the root", Read, [](Text valid) { return valid + "<!-- mine -->"; }},
        {"blank lines", Read, [](Text valid) { return Replaced(valid, "\n", "\n\n \t\n"); }},
        {"all on one line", Read, [](Text valid) { return Replaced(Replaced(valid, "\n", ""), "\t", ""); }},
        {"an unknown additional value", Read,
         [](Text valid) { return WithElement(valid, "<Mine a=\"1\">2</Mine>"); }},

        {"declared UTF-16, but UTF-8", PartlyRead,
         [](Text valid) { return "<?xml version=\"1.0\" encoding=\"UTF-16\"?>\n" + valid; }},
        {"declared Latin-1, but ASCII", PartlyRead,
         [](Text valid) { return "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n" + valid; }},
        {"a document type", PartlyRead, [](Text valid) { return "<!DOCTYPE data>\n" + valid; }},
        {"an unused entity that expands to a billion words", PartlyRead,
         [](Text valid) { return NestedEntities() + "\n" + valid; }},
    };
    return all;
}

/// Replaces a data file by something other than a regular file.
struct Obstacle {
    std::string name;
    std::function<void(const TemporaryFolder& folder, const std::string& file)> put;
    bool isKnownToWindows = false;
};

const std::vector<Obstacle>& Obstacles()
{
    using Folder = const TemporaryFolder&;
    using Name = const std::string&;
    static const std::vector<Obstacle> all{
        {"nothing", [](Folder, Name) {}, true},
        {"a folder", [](Folder folder, Name file) { folder.MakeFolder(file); }, true},
        {"a folder that is not empty", [](Folder folder, Name file) { folder.MakeFolder(file + "/" + file); },
         true},
        {"a pipe", [](Folder folder, Name file) { folder.MakePipe(file); }},
        {"a dangling link", [](Folder folder, Name file) { folder.MakeLink(file, "unplugged/" + file); }},
        {"a link to itself", [](Folder folder, Name file) { folder.MakeLink(file, file); }},
        {"an endless device", [](Folder folder, Name file) { folder.MakeLink(file, "/dev/zero"); }},
        {"the null device", [](Folder folder, Name file) { folder.MakeLink(file, "/dev/null"); }},
    };
    return all;
}

/// Returns the contents of the folder: names with their types and, for regular files, the bytes.
std::map<std::string, std::string> Contents(const TemporaryFolder& folder)
{
    std::map<std::string, std::string> contents;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(ToPath(folder.Path()))) {
        const std::string name = FromPath(entry.path().lexically_relative(ToPath(folder.Path())));
        const auto kind = entry.symlink_status().type();
        contents[name] = std::to_string(static_cast<int>(kind)) +
                         (kind == std::filesystem::file_type::regular ? folder.Read(name) : "");
    }
    return contents;
}

} // namespace

class tst_HostileFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void fileVariant_isReadOrNeverOverwritten_data()
    {
        QTest::addColumn<int>("index");
        int index = 0;
        for (const FileVariant& variant : FileVariants()) {
            QTest::newRow(variant.name.c_str()) << index++;
        }
    }

    void fileVariant_isReadOrNeverOverwritten()
    {
        QFETCH(int, index);
        const FileVariant& variant = FileVariants()[static_cast<std::size_t>(index)];
        std::size_t turn = 0;
        for (const std::string file : dataFiles) {
            const bool all = turn++ == static_cast<std::size_t>(index) % dataFiles.size();
            const TemporaryFolder folder;
            CopyShipped(folder);
            const std::string bytes = variant.make(FileWithRecords(file));
            folder.Write(file, bytes);
            const std::vector<std::string> names = folder.Names();
            std::string broken;
            switch (variant.expected) {
            case ExpectedResult::Refused:
                broken = m_trial.RunOnUnreadable(folder.Path(), file, all);
                break;
            case ExpectedResult::Read:
                broken = m_trial.RunOnReadable(folder.Path(), file, all);
                break;
            case ExpectedResult::PartlyRead:
                broken = m_trial.Run(folder.Path(), file, all);
                break;
            }
            QVERIFY2(broken.empty(), (file + ": " + broken).c_str());
            const std::string after = folder.Read(file);
            if (variant.expected == ExpectedResult::Refused) {
                QVERIFY2(after == bytes, (file + ": changed").c_str());
            } else if (after != bytes) {
                QCOMPARE(file + ": " + ReadXml(after).fault, file + ": ");
            }
            QCOMPARE(folder.Names(), names);
        }
    }

    void nonFile_isNotTouched_data()
    {
        QTest::addColumn<int>("index");
        int index = 0;
        for (const Obstacle& obstacle : Obstacles()) {
            QTest::newRow(obstacle.name.c_str()) << index++;
        }
    }

    void nonFile_isNotTouched()
    {
        QFETCH(int, index);
        const Obstacle& obstacle = Obstacles()[static_cast<std::size_t>(index)];
        if (!obstacle.isKnownToWindows) {
            NOT_ON_WINDOWS("links, pipes and devices among the files");
        }
        for (const std::string file : dataFiles) {
            const TemporaryFolder folder;
            CopyShipped(folder);
            std::filesystem::remove(ToPath(folder.PathOf(file)));
            obstacle.put(folder, file);
            const auto before = Contents(folder);
            const std::string broken = m_trial.RunOnUnreadable(folder.Path(), file, false);
            QVERIFY2(broken.empty(), (file + ": " + broken).c_str());
            QVERIFY2(Contents(folder) == before, (file + ": the folder has changed").c_str());
        }
    }

    void fileWithoutReadPermission_isNotTouched_data()
    {
        QTest::addColumn<int>("mode");
        QTest::newRow("no rights") << 0000;
        QTest::newRow("write only") << 0200;
    }

    void fileWithoutReadPermission_isNotTouched()
    {
        QFETCH(int, mode);
        for (const std::string file : dataFiles) {
            const TemporaryFolder folder;
            CopyShipped(folder);
            const std::string valid = FileWithRecords(file);
            folder.Write(file, valid);
            const auto path = ToPath(folder.PathOf(file));
            std::string broken;
            {
                const UnprivilegedUser user(folder);
                if (!UnprivilegedUser::IsUnprivileged()) {
                    QSKIP(UnprivilegedUser::skipReason);
                }
                std::filesystem::permissions(path, static_cast<std::filesystem::perms>(mode));
                broken = m_trial.RunOnUnreadable(folder.Path(), file, false);
                QCOMPARE(static_cast<int>(std::filesystem::status(path).permissions()), mode);
                std::filesystem::permissions(path, std::filesystem::perms::owner_all);
            }
            QVERIFY2(broken.empty(), (file + ": " + broken).c_str());
            QVERIFY2(folder.Read(file) == valid, (file + ": changed").c_str());
        }
    }

private:
    OperationTrial m_trial;
};

TEST_CLASS(tst_HostileFiles)
#include "tst_HostileFiles.moc"
