#include "Characters.h"
#include "safety/Form.h"
#include "support/TestClass.h"
#include "ui/locations/LocationTest.h"

#include <QClipboard>

#include <array>
#include <utility>

using namespace Tarno;

// Text that is typed or pasted into the boxes of the editors is in the file after "Save", and in the boxes
// when the editor opens again. In a multi-line box, each character that ends a line becomes a line break.

using namespace std::string_literals;

namespace
{

struct BoundBox {
    const char* name;
    std::size_t position;
};

constexpr std::array lineBoxes{
    BoundBox{"txtTideHighHt", EntryField::HighTideHt}, BoundBox{"txtTideLowHt", EntryField::LowTideHt},
    BoundBox{"txtAirTemp", EntryField::AirTemp}, BoundBox{"txtWaterTemp", EntryField::WaterTemp},
    BoundBox{"txtPressure", EntryField::PressureReading}};
constexpr std::array linesBoxes{
    BoundBox{"txtTarget", EntryField::TargetSpecies}, BoundBox{"txtBait", EntryField::BaitUsed},
    BoundBox{"txtMethods", EntryField::Method}, BoundBox{"txtCaught", EntryField::FishCaught},
    BoundBox{"txtObbos", EntryField::Obbos}};

/// Replaces everything that ends a line in a multi-line box by `lineBreak`.
std::string WithLineBreaks(std::string text, const std::string& lineBreak)
{
    for (const std::string end : {"\r\n", "\r", "\n", "\u2028", "\u2029", "\uFDD0", "\uFDD1"}) {
        for (std::size_t at = 0; (at = text.find(end, at)) != std::string::npos; at += 1) {
            text.replace(at, end.size(), 1, '\0');
        }
    }
    std::string broken;
    for (const char letter : text) {
        broken += letter == '\0' ? lineBreak : std::string(1, letter);
    }
    return broken;
}

/// Returns the text that the box shows.
std::string Shown(const QPlainTextEdit& box)
{
    QString text = box.document()->toRawText();
    return text.replace(QChar::ParagraphSeparator, QLatin1Char('\n')).toStdString();
}

/// Converts from UTF-8. Unlike Qt's conversion, keeps a byte order mark at the start.
QString Unicode(const std::string& utf8)
{
    return QString::fromStdString("x" + utf8).mid(1);
}

/// Replaces the text of the box by pasting.
template <typename Box>
void Paste(const QWidget& editor, const char* name, const QString& text)
{
    auto& box = Find<Box>(editor, name);
    QGuiApplication::clipboard()->setText(text);
    box.clear(); // pasting an empty text does nothing
    box.paste();
}

/// Returns the characters to test: all in the long form; otherwise the first scripts, the end of the first
/// plane, and a part of the others.
std::vector<char32_t> Characters()
{
    std::vector<char32_t> some;
    std::size_t at = 0;
    for (const char32_t character : XmlCharacters()) {
        constexpr std::size_t stride = 211;
        const bool first = character < 0x2100;
        const bool last = character >= 0xFD00 && character < 0x10000;
        if (IsLongForm() || first || last || at++ % stride == 0) {
            some.push_back(character);
        }
    }
    return some;
}

/// Returns the values of the entry as read from the file by a new cSQL object.
std::vector<std::string> StoredEntry(const ProgramWithPlace& program, int key)
{
    ScriptedFileOperations operations;
    cSQL sql(program.programFolder, operations);
    Record entry;
    std::vector<std::string> values;
    if (sql.Init() == succeeded && sql.EntryGet(static_cast<std::int16_t>(key), entry) == succeeded) {
        for (std::size_t position = 0; position < entry.Count(); ++position) {
            values.push_back(entry.Text(position));
        }
    }
    return values;
}

/// Pastes a text into each of the boxes of an entry and saves; then checks the file, and the boxes after
/// opening the editor again.
void CheckEntry(ProgramWithPlace& program, int key, const std::vector<std::string>& texts)
{
    const auto textOf = [&](std::size_t box) { return box < texts.size() ? texts[box] : ""s; };
    Edit(program, key, [&](QWidget& editor) {
        for (std::size_t box = 0; box < lineBoxes.size(); ++box) {
            GoTo(editor, lineBoxes[box].name);
            Paste<QLineEdit>(editor, lineBoxes[box].name, Unicode(textOf(box)));
        }
        for (std::size_t box = 0; box < linesBoxes.size(); ++box) {
            GoTo(editor, linesBoxes[box].name);
            Paste<QPlainTextEdit>(editor, linesBoxes[box].name, Unicode(textOf(box)));
        }
        SaveAndClose(editor);
    });
    const std::vector<std::string> stored = StoredEntry(program, key);
    QCOMPARE(stored.size(), std::size_t(EntryField::Count));
    for (std::size_t box = 0; box < lineBoxes.size(); ++box) {
        QCOMPARE(stored[lineBoxes[box].position], textOf(box));
    }
    for (std::size_t box = 0; box < linesBoxes.size(); ++box) {
        QCOMPARE(stored[linesBoxes[box].position], WithLineBreaks(textOf(box), "~CL~"));
    }

    const std::string saved = program.folder.Read("tarno.xml");
    Edit(program, key, [&](QWidget& editor) {
        for (std::size_t box = 0; box < lineBoxes.size(); ++box) {
            GoTo(editor, lineBoxes[box].name);
            QCOMPARE(Find<QLineEdit>(editor, lineBoxes[box].name).text().toStdString(), textOf(box));
        }
        for (std::size_t box = 0; box < linesBoxes.size(); ++box) {
            GoTo(editor, linesBoxes[box].name);
            QCOMPARE(Shown(Find<QPlainTextEdit>(editor, linesBoxes[box].name)),
                     WithLineBreaks(textOf(box), "\n"));
        }
        Close(editor);
    });
    QCOMPARE(program.folder.Read("tarno.xml"), saved);
}

} // namespace

class tst_TypedText : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void everyCharacter_isSavedAndShownAgain()
    {
        const std::vector<char32_t> characters = Characters();
        constexpr std::size_t inOneBox = 500;
        const std::vector<std::string> texts = Texts(characters, inOneBox);
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        for (std::size_t at = 0; at < texts.size(); at += lineBoxes.size()) {
            const auto first = texts.begin() + static_cast<std::ptrdiff_t>(at);
            const auto count = std::min(lineBoxes.size(), texts.size() - at);
            CheckEntry(program, key, {first, first + static_cast<std::ptrdiff_t>(count)});
            if (QTest::currentTestFailed()) {
                return;
            }
            QCOMPARE(XmllintFault(program.folder.PathOf("tarno.xml")), ""s);
        }
        qInfo("%zu characters typed", characters.size());
    }

    void everyOtherCharacter_becomesTheReplacementCharacter()
    {
        QString text;
        std::string kept;
        for (char32_t character = 0; character <= 0xFFFF; ++character) {
            const bool control =
                character < 0x20 && character != '\t' && character != '\n' && character != '\r';
            const bool surrogate = character >= 0xD800 && character <= 0xDFFF;
            if (control || surrogate || character >= 0xFFFE) {
                text += QChar(static_cast<char16_t>(character));
                text += QLatin1Char('a'); // separates surrogates, which could form a pair
                kept += replacementCharacter + "a";
            }
        }
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        Edit(program, key, [&](QWidget& editor) {
            GoTo(editor, "txtObbos");
            Paste<QPlainTextEdit>(editor, "txtObbos", text);
            GoTo(editor, "txtAirTemp");
            Paste<QLineEdit>(editor, "txtAirTemp", text);
            SaveAndClose(editor); // closes without a question, because everything is saved
        });
        QCOMPARE(StoredEntry(program, key).at(EntryField::Obbos), kept);
        QCOMPARE(StoredEntry(program, key).at(EntryField::AirTemp), kept);
        QCOMPARE(XmllintFault(program.folder.PathOf("tarno.xml")), ""s);
    }

    void firstAndLastCharacter_areKept()
    {
        ProgramWithPlace program;
        const int key = program.AddCompleteEntry();
        for (const std::string edge : {" ", "\t", "\u00A0", "\uFEFF", "\u200B", "\u200F", "\u3000", "\uFFFC",
                                       "\n", "\r", "\r\n", "\u2028", "&", "<", "~", "]]>", "\U0001F41F"}) {
            CheckEntry(program, key, {edge, edge + edge, edge + "a" + edge, "a" + edge, edge + "a"});
            if (QTest::currentTestFailed()) {
                return;
            }
        }
    }

    void valueWrittenByHand_staysWhileOthersAreEdited()
    {
        // a multi-line box cannot contain this text unchanged
        const std::string byHand = "\uFEFFa\r\nb\rc\nd\u2028e\u2029f\uFDD0g\uFDD1h~CL~i ";
        ProgramWithPlace program;
        const int key =
            program.AddCompleteEntry({{EntryField::Obbos, byHand}, {EntryField::AirTemp, byHand}});
        Edit(program, key, [](QWidget& editor) {
            GoTo(editor, "txtObbos");
            GoTo(editor, "txtAirTemp");
            Enter(editor, "txtWaterTemp", "21.5");
            SaveAndClose(editor);
        });
        QCOMPARE(StoredEntry(program, key).at(EntryField::WaterTemp), "21.5"s);
        QCOMPARE(StoredEntry(program, key).at(EntryField::Obbos), byHand);
        QCOMPARE(StoredEntry(program, key).at(EntryField::AirTemp), byHand);
    }

    void location_isSavedAndShownAgain()
    {
        constexpr std::array boxes{BoundBox{"txtLocName", LocationField::LocName},
                                   BoundBox{"txtDirections", LocationField::LocDirections},
                                   BoundBox{"txtDescription", LocationField::LocDescription}};
        std::vector<char32_t> characters;
        for (const char32_t character : XmlCharacters()) {
            if (character < 0x180 || (character >= 0x2000 && character < 0x2070) || character >= 0x10FF00 ||
                (character >= 0xFDC0 && character < 0x10000)) {
                characters.push_back(character);
            }
        }
        ProgramWithPlace program;
        const std::vector<std::string> texts = Texts(characters, 400);
        for (std::size_t at = 0; at < texts.size(); ++at) {
            const auto textOf = [&](std::size_t box) { return texts[(at + box) % texts.size()]; };
            EditLocation(program, 1, [&](QWidget& editor) {
                for (std::size_t box = 0; box < boxes.size(); ++box) {
                    Click(editor, boxes[box].name);
                    Paste<QPlainTextEdit>(editor, boxes[box].name, Unicode(textOf(box)));
                }
                SaveAndClose(editor);
            });
            for (std::size_t box = 0; box < boxes.size(); ++box) {
                QCOMPARE(StoredLocation(program, 1)[boxes[box].position],
                         WithLineBreaks(textOf(box), "~CL~"));
            }
            EditLocation(program, 1, [&](QWidget& editor) {
                for (std::size_t box = 0; box < boxes.size(); ++box) {
                    QCOMPARE(Shown(Find<QPlainTextEdit>(editor, boxes[box].name)),
                             WithLineBreaks(textOf(box), "\n"));
                }
                Close(editor);
            });
            QCOMPARE(XmllintFault(program.folder.PathOf("location.xml")), ""s);
        }
    }
};

TEST_CLASS(tst_TypedText)
#include "tst_TypedText.moc"
