#include "EveryOperation.h"
#include "support/Platform.h"
#include "support/TestClass.h"
#include "support/UnprivilegedUser.h"

using namespace Tarno;

// Each of the seven data files in turn is replaced by something that is no data file, by one that is strange
// but sound, or by something that is no file at all; then every operation is tried.

using namespace std::string_literals;

namespace
{

/// What becomes of a strange file.
enum class Fate {
    Refused, ///< nothing that needs it works, its bytes stay
    Read,    ///< everything works
    InPart,  ///< what comes before its root hides it from lists and new keys; it is never made worse
};

struct Strangeness {
    std::string name;
    Fate fate;
    std::function<std::string(const std::string& sound)> make;
};

std::string Replaced(std::string text, const std::string& from, const std::string& to)
{
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) {
        text.replace(at, from.size(), to);
    }
    return text;
}

/// The file with `text` in its first value.
std::string WithValue(std::string file, const std::string& text)
{
    return file.insert(file.find("</"), text);
}

/// The file with `element` behind the last value of its first record.
std::string WithElement(std::string file, const std::string& element)
{
    return file.insert(file.find("\n\t</"), element);
}

/// The file with so many levels of elements.
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

enum class Order { LittleEnd, BigEnd };

std::string Utf16(const std::string& ascii, Order order)
{
    std::string bytes;
    for (const char letter : ascii) {
        bytes += order == Order::LittleEnd ? std::string{letter, '\0'} : std::string{'\0', letter};
    }
    return bytes;
}

/// A document type whose last entity stands for a thousand million words.
std::string EntityBomb()
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

const std::vector<Strangeness>& Strangenesses()
{
    using Text = const std::string&;
    static const std::vector<Strangeness> all{
        {"zeros", Fate::Refused, [](Text sound) { return std::string(sound.size(), '\0'); }},
        {"zeros in front", Fate::Refused, [](Text sound) { return std::string(512, '\0') + sound; }},
        {"its last block zeros", Fate::Refused,
         [](Text sound) { return sound.substr(0, sound.size() - 50) + std::string(50, '\0'); }},
        {"empty", Fate::Refused, [](Text) { return ""s; }},
        {"one blank", Fate::Refused, [](Text) { return " "s; }},
        {"a line end", Fate::Refused, [](Text) { return "\n"s; }},
        {"a mark alone", Fate::Refused, [](Text) { return "\xEF\xBB\xBF"s; }},
        {"a UTF-16 mark alone", Fate::Refused, [](Text) { return "\xFF\xFE"s; }},
        {"two roots", Fate::Refused, [](Text sound) { return sound + sound; }},
        {"a second, empty root", Fate::Refused, [](Text sound) { return sound + "<data/>"; }},
        {"text in front", Fate::Refused, [](Text sound) { return "x" + sound; }},
        {"text behind", Fate::Refused, [](Text sound) { return sound + "x"; }},
        {"a reference behind", Fate::Refused, [](Text sound) { return sound + "&amp;"; }},
        {"a section behind", Fate::Refused, [](Text sound) { return sound + "<![CDATA[]]>"; }},
        {"another root", Fate::Refused, [](Text sound) { return Replaced(sound, "data>", "dato>"); }},
        {"a prefixed root", Fate::Refused, [](Text sound) { return Replaced(sound, "data>", "t:data>"); }},
        {"end tags in another case", Fate::Refused, [](Text sound) { return Replaced(sound, "</", "</X"); }},
        {"Latin-1", Fate::Refused, [](Text sound) { return WithValue(sound, "\xE9"); }},
        {"declared Latin-1", Fate::Refused,
         [](Text sound) {
             return "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n" + WithValue(sound, "\xE9");
         }},
        {"overlong UTF-8", Fate::Refused, [](Text sound) { return WithValue(sound, "\xC0\xAF"); }},
        {"a surrogate", Fate::Refused, [](Text sound) { return WithValue(sound, "\xED\xA0\x80"); }},
        {"UTF-16 without a mark, little end", Fate::Refused,
         [](Text sound) { return Utf16(sound, Order::LittleEnd); }},
        {"UTF-16 without a mark, big end", Fate::Refused,
         [](Text sound) { return Utf16(sound, Order::BigEnd); }},
        {"UTF-16 with the other's mark", Fate::Refused,
         [](Text sound) { return "\xFE\xFF" + Utf16(sound, Order::LittleEnd); }},
        {"half a unit of UTF-16", Fate::Refused,
         [](Text sound) { return "\xFF\xFE" + Utf16(sound, Order::LittleEnd) + "\n"; }},
        {"UTF-32", Fate::Refused,
         [](Text sound) {
             return "\xFF\xFE\0\0"s + Utf16(Utf16(sound, Order::LittleEnd), Order::LittleEnd);
         }},
        {"257 levels", Fate::Refused, [](Text sound) { return Nested(sound, 257); }},
        {"200,000 levels", Fate::Refused, [](Text sound) { return Nested(sound, 200'000); }},
        {"200,000 start tags", Fate::Refused,
         [](Text) {
             std::string tags;
             for (int level = 0; level < 200'000; ++level) {
                 tags += "<data>";
             }
             return tags;
         }},
        {"a thousand million words", Fate::Refused,
         [](Text sound) { return EntityBomb() + WithValue(sound, "&a9;"); }},
        {"another file's text", Fate::Refused,
         [](Text sound) {
             return "<!DOCTYPE data [<!ENTITY a SYSTEM \"file:///etc/passwd\">]>" + WithValue(sound, "&a;");
         }},
        {"an unfinished document type", Fate::Refused,
         [](Text sound) { return "<!DOCTYPE data [<!ENTITY a \"" + sound; }},
        {"a page of the web", Fate::Refused,
         [](Text) { return "<!DOCTYPE html><html><body>Log in to this network</body></html>"s; }},
        {"a compressed file", Fate::Refused, [](Text sound) { return "PK\x03\x04" + sound; }},
        {"a conflict of two versions", Fate::Refused,
         [](Text sound) { return "<<<<<<< mine\n" + sound + "=======\n" + sound + ">>>>>>> theirs\n"; }},

        {"UTF-8 with a mark", Fate::Read, [](Text sound) { return "\xEF\xBB\xBF" + sound; }},
        {"UTF-16, little end", Fate::Read,
         [](Text sound) { return "\xFF\xFE" + Utf16(sound, Order::LittleEnd); }},
        {"UTF-16, big end", Fate::Read, [](Text sound) { return "\xFE\xFF" + Utf16(sound, Order::BigEnd); }},
        {"64 levels", Fate::Read, [](Text sound) { return Nested(sound, 64); }},
        {"256 levels", Fate::Read, [](Text sound) { return Nested(sound, 256); }},
        {"a comment behind", Fate::Read, [](Text sound) { return sound + "<!-- mine -->"; }},
        {"blank lines", Fate::Read, [](Text sound) { return Replaced(sound, "\n", "\n\n \t\n"); }},
        {"all in one line", Fate::Read,
         [](Text sound) { return Replaced(Replaced(sound, "\n", ""), "\t", ""); }},
        {"more values than known", Fate::Read,
         [](Text sound) { return WithElement(sound, "<Mine a=\"1\">2</Mine>"); }},

        {"declared UTF-16, but UTF-8", Fate::InPart,
         [](Text sound) { return "<?xml version=\"1.0\" encoding=\"UTF-16\"?>\n" + sound; }},
        {"declared Latin-1, but plain", Fate::InPart,
         [](Text sound) { return "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n" + sound; }},
        {"a document type", Fate::InPart, [](Text sound) { return "<!DOCTYPE data>\n" + sound; }},
        {"an unused thousand million words", Fate::InPart,
         [](Text sound) { return EntityBomb() + "\n" + sound; }},
    };
    return all;
}

/// Puts in the place of a data file something that has no bytes.
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
        {"a full folder", [](Folder folder, Name file) { folder.MakeFolder(file + "/" + file); }, true},
        {"a pipe", [](Folder folder, Name file) { folder.MakePipe(file); }},
        {"a dangling link", [](Folder folder, Name file) { folder.MakeLink(file, "unplugged/" + file); }},
        {"a link to itself", [](Folder folder, Name file) { folder.MakeLink(file, file); }},
        {"a device without end", [](Folder folder, Name file) { folder.MakeLink(file, "/dev/zero"); }},
        {"a device that swallows all", [](Folder folder, Name file) { folder.MakeLink(file, "/dev/null"); }},
    };
    return all;
}

/// What lies in the folder: names with their kinds and, of files, the bytes.
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

    void strangeFile_isReadOrNeverSavedOver_data()
    {
        QTest::addColumn<int>("index");
        int index = 0;
        for (const Strangeness& strangeness : Strangenesses()) {
            QTest::newRow(strangeness.name.c_str()) << index++;
        }
    }

    void strangeFile_isReadOrNeverSavedOver()
    {
        QFETCH(int, index);
        const Strangeness& strangeness = Strangenesses()[static_cast<std::size_t>(index)];
        std::size_t turn = 0;
        for (const std::string file : dataFiles) {
            const bool all = turn++ == static_cast<std::size_t>(index) % dataFiles.size();
            const TemporaryFolder folder;
            CopyShipped(folder);
            const std::string strange = strangeness.make(FileWithRecords(file));
            folder.Write(file, strange);
            const std::vector<std::string> names = folder.Names();
            std::string broken;
            switch (strangeness.fate) {
            case Fate::Refused:
                broken = m_trial.RunOnUnreadable(folder.Path(), file, all);
                break;
            case Fate::Read:
                broken = m_trial.RunOnSound(folder.Path(), file, all);
                break;
            case Fate::InPart:
                broken = m_trial.Run(folder.Path(), file, all);
                break;
            }
            QVERIFY2(broken.empty(), (file + ": " + broken).c_str());
            const std::string after = folder.Read(file);
            if (strangeness.fate == Fate::Refused) {
                QVERIFY2(after == strange, (file + ": changed").c_str());
            } else if (after != strange) {
                QCOMPARE(file + ": " + ReadXml(after).fault, file + ": ");
            }
            QCOMPARE(folder.Names(), names);
        }
    }

    void whatIsNoFile_isLeftAlone_data()
    {
        QTest::addColumn<int>("index");
        int index = 0;
        for (const Obstacle& obstacle : Obstacles()) {
            QTest::newRow(obstacle.name.c_str()) << index++;
        }
    }

    void whatIsNoFile_isLeftAlone()
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

    void fileThatMayNotBeRead_isLeftAlone_data()
    {
        QTest::addColumn<int>("mode");
        QTest::newRow("no right") << 0000;
        QTest::newRow("only to write") << 0200;
    }

    void fileThatMayNotBeRead_isLeftAlone()
    {
        QFETCH(int, mode);
        for (const std::string file : dataFiles) {
            const TemporaryFolder folder;
            CopyShipped(folder);
            const std::string sound = FileWithRecords(file);
            folder.Write(file, sound);
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
            QVERIFY2(folder.Read(file) == sound, (file + ": changed").c_str());
        }
    }

private:
    OperationTrial m_trial;
};

TEST_CLASS(tst_HostileFiles)
#include "tst_HostileFiles.moc"
