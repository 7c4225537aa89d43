#include "support/Proposals.h"
#include "support/StdStrings.h"
#include "support/TestClass.h"
#include "ui/common/TextCompleter.h"

#include <QDialog>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QVBoxLayout>

using namespace Tarno;

// The list of proposals below a box, and its keys.

namespace
{

using Texts = std::vector<std::string>;

const QStringList words{QStringLiteral("bait"), QStringLiteral("bass"), QStringLiteral("bream"),
                        QStringLiteral("cod")};

/// Proposes the words that start with the text before the cursor.
TextCompleter::Proposals ProposeWords(const QString& line, int cursor)
{
    const QString typed = line.left(cursor);
    const int start = static_cast<int>(typed.lastIndexOf(QLatin1Char(' '))) + 1;
    TextCompleter::Proposals proposals{.position = start, .length = cursor - start};
    for (const QString& word : words) {
        if (cursor > start && word.startsWith(typed.mid(start)) && word != typed.mid(start)) {
            proposals.texts << word;
        }
    }
    return proposals;
}

/// A window with a box that has proposals, and another box below it.
class CompletedBox : public QDialog
{
public:
    explicit CompletedBox(bool hasLines, const TextCompleter::Propose& propose = ProposeWords)
    {
        setObjectName(QStringLiteral("window"));
        auto* layout = new QVBoxLayout(this);
        m_lines = hasLines ? new QPlainTextEdit(this) : nullptr;
        m_line = hasLines ? nullptr : new QLineEdit(this);
        QWidget* box = hasLines ? static_cast<QWidget*>(m_lines) : m_line;
        if (hasLines) {
            m_lines->setTabChangesFocus(true);
        }
        box->setObjectName(QStringLiteral("box"));
        other = new QLineEdit(this);
        layout->addWidget(box);
        layout->addWidget(other);
        new TextCompleter(box, propose);
        resize(400, 300);
        show();
        AwaitActive(*this);
        box->setFocus();
    }

    std::string Text() const
    {
        return (m_lines != nullptr ? m_lines->toPlainText() : m_line->text()).toStdString();
    }

    void SetText(const char* text)
    {
        if (m_lines != nullptr) {
            m_lines->setPlainText(QLatin1String(text));
        } else {
            m_line->setText(QLatin1String(text));
        }
    }

    QLineEdit* other;

private:
    QPlainTextEdit* m_lines;
    QLineEdit* m_line;
};

void AddBoxes()
{
    QTest::addColumn<bool>("hasLines");
    QTest::newRow("line") << false;
    QTest::newRow("lines") << true;
}

} // namespace

class tst_TextCompleter : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void typing_proposesWithoutASelection_data() { AddBoxes(); }

    void typing_proposesWithoutASelection()
    {
        QFETCH(bool, hasLines);
        CompletedBox window(hasLines);
        QVERIFY(Proposals(window) == nullptr);
        Type(window, "b");
        QCOMPARE(ProposedTexts(window), (Texts{"bait", "bass", "bream"}));
        QCOMPARE(SelectedProposal(window), -1);
        Type(window, "a");
        QCOMPARE(ProposedTexts(window), (Texts{"bait", "bass"}));
        Press(window, Qt::Key_Backspace);
        QCOMPARE(ProposedTexts(window), (Texts{"bait", "bass", "bream"}));
        Type(window, "x");
        QVERIFY(Proposals(window) == nullptr);
        QCOMPARE(window.Text(), "bx");
    }

    void list_isInTheWindowBelowTheCursor_data() { AddBoxes(); }

    void list_isInTheWindowBelowTheCursor()
    {
        QFETCH(bool, hasLines);
        CompletedBox window(hasLines);
        Type(window, "b");
        const QListWidget* list = Proposals(window);
        QVERIFY(list != nullptr);
        QCOMPARE(list->parentWidget(), &window);
        QVERIFY(window.rect().contains(list->geometry()));
        QVERIFY(!list->hasFocus());
        QVERIFY(!list->accessibleName().isEmpty());
        const QWidget* box = window.findChild<QWidget*>(QStringLiteral("box"));
        QVERIFY(list->y() > box->y());
    }

    void key_takesTheSelectedProposal_data()
    {
        QTest::addColumn<bool>("hasLines");
        QTest::addColumn<int>("key");
        for (const bool hasLines : {false, true}) {
            QTest::addRow("Tab, %d", hasLines) << hasLines << static_cast<int>(Qt::Key_Tab);
            QTest::addRow("Return, %d", hasLines) << hasLines << static_cast<int>(Qt::Key_Return);
            QTest::addRow("Enter, %d", hasLines) << hasLines << static_cast<int>(Qt::Key_Enter);
        }
    }

    void key_takesTheSelectedProposal()
    {
        QFETCH(bool, hasLines);
        QFETCH(int, key);
        CompletedBox window(hasLines);
        Type(window, "old b");
        Press(window, Qt::Key_Down);
        Press(window, Qt::Key_Down);
        QCOMPARE(SelectedProposal(window), 1);
        Press(window, static_cast<Qt::Key>(key), key == Qt::Key_Enter ? Qt::KeypadModifier : Qt::NoModifier);
        QCOMPARE(window.Text(), "old bass");
        QVERIFY(Proposals(window) == nullptr);
        QVERIFY(!window.other->hasFocus());
        QVERIFY(window.isVisible());
        Type(window, "!");
        QCOMPARE(window.Text(), "old bass!");
        Press(window, Qt::Key_Z, Qt::ControlModifier);
        Press(window, Qt::Key_Z, Qt::ControlModifier);
        QVERIFY(window.Text() != "old bass");
    }

    void click_takesTheProposal_data() { AddBoxes(); }

    void click_takesTheProposal()
    {
        QFETCH(bool, hasLines);
        CompletedBox window(hasLines);
        Type(window, "b");
        ClickProposal(window, 2);
        QCOMPARE(window.Text(), "bream");
        QVERIFY(Proposals(window) == nullptr);
        Type(window, "s");
        QCOMPARE(window.Text(), "breams");
    }

    void arrows_stopAtTheEnds()
    {
        CompletedBox window(false);
        Type(window, "b");
        for (const int row : {0, 1, 2, 2}) {
            Press(window, Qt::Key_Down);
            QCOMPARE(SelectedProposal(window), row);
        }
        for (const int row : {1, 0, 0}) {
            Press(window, Qt::Key_Up);
            QCOMPARE(SelectedProposal(window), row);
        }
        Type(window, "r");
        QCOMPARE(SelectedProposal(window), -1);
        Press(window, Qt::Key_Escape);
        Press(window, Qt::Key_Backspace);
        Press(window, Qt::Key_Up);
        QCOMPARE(SelectedProposal(window), 2);
    }

    void escape_closesOnlyTheList_data() { AddBoxes(); }

    void escape_closesOnlyTheList()
    {
        QFETCH(bool, hasLines);
        CompletedBox window(hasLines);
        Type(window, "b");
        Press(window, Qt::Key_Escape);
        QVERIFY(Proposals(window) == nullptr);
        QVERIFY(window.isVisible());
        QCOMPARE(window.Text(), "b");
        Press(window, Qt::Key_Escape);
        QVERIFY(!window.isVisible());
    }

    void tab_withoutSelection_leavesTheBox_data() { AddBoxes(); }

    void tab_withoutSelection_leavesTheBox()
    {
        QFETCH(bool, hasLines);
        CompletedBox window(hasLines);
        Type(window, "b");
        Press(window, Qt::Key_Tab);
        QCOMPARE(window.Text(), "b");
        QVERIFY(window.other->hasFocus());
        QVERIFY(Proposals(window) == nullptr);
    }

    void enter_withoutSelection_isForTheBox()
    {
        CompletedBox window(true);
        Type(window, "b");
        Press(window, Qt::Key_Return);
        QCOMPARE(window.Text(), "b\n");
        QVERIFY(Proposals(window) == nullptr);
    }

    void focusOut_closesTheList_data() { AddBoxes(); }

    void focusOut_closesTheList()
    {
        QFETCH(bool, hasLines);
        CompletedBox window(hasLines);
        Type(window, "b");
        Click(*window.other);
        QVERIFY(Proposals(window) == nullptr);
        QVERIFY(window.other->hasFocus());
    }

    void movingTheCursor_closesTheList()
    {
        for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Home, Qt::Key_End, Qt::Key_Delete}) {
            CompletedBox window(false);
            Type(window, "b");
            Press(window, key);
            QVERIFY(Proposals(window) == nullptr);
        }
    }

    void mouseInTheBox_closesTheList_data() { AddBoxes(); }

    void mouseInTheBox_closesTheList()
    {
        QFETCH(bool, hasLines);
        CompletedBox window(hasLines);
        window.SetText("cod and some more words");
        Press(window, Qt::Key_Home);
        Type(window, "b");
        QVERIFY(Proposals(window) != nullptr);
        const QWidget* box = window.findChild<QWidget*>(QStringLiteral("box"));
        QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, box->mapTo(&window, QPoint(100, 10)));
        QVERIFY(Proposals(window) == nullptr);
    }

    void otherKeys_proposeNothing()
    {
        CompletedBox window(false);
        window.SetText("b");
        for (const Qt::Key key : {Qt::Key_Shift, Qt::Key_Control, Qt::Key_End, Qt::Key_F5, Qt::Key_Delete}) {
            Press(window, key);
            QVERIFY(Proposals(window) == nullptr);
        }
        Press(window, Qt::Key_A, Qt::ControlModifier);
        QVERIFY(Proposals(window) == nullptr);
    }

    void changedByTheProgram_proposesNothing()
    {
        CompletedBox window(false);
        window.SetText("b");
        QApplication::processEvents();
        QVERIFY(Proposals(window) == nullptr);
    }

    void wordInTheMiddle_isReplaced_data() { AddBoxes(); }

    void wordInTheMiddle_isReplaced()
    {
        QFETCH(bool, hasLines);
        CompletedBox window(hasLines);
        window.SetText(hasLines ? "first\n\xE9  and more\nlast" : "\xE9  and more");
        if (hasLines) {
            Press(window, Qt::Key_Home, Qt::ControlModifier);
            Press(window, Qt::Key_Down);
        } else {
            Press(window, Qt::Key_Home);
        }
        Press(window, Qt::Key_Right);
        Press(window, Qt::Key_Right);
        Type(window, "c");
        QCOMPARE(ProposedTexts(window), Texts{"cod"});
        Press(window, Qt::Key_Down);
        Press(window, Qt::Key_Tab);
        const std::string line = "\xC3\xA9 cod and more";
        QCOMPARE(window.Text(), hasLines ? "first\n" + line + "\nlast" : line);
    }

    void manyProposals_areScrolled()
    {
        CompletedBox window(false, [](const QString& line, int /*cursor*/) {
            TextCompleter::Proposals proposals{.position = 0, .length = static_cast<int>(line.size())};
            for (int number = 0; number < 20; ++number) {
                proposals.texts << QStringLiteral("proposal number %1 that is long").arg(number).repeated(5);
            }
            return proposals;
        });
        Type(window, "b");
        const QListWidget* list = Proposals(window);
        QVERIFY(list != nullptr);
        QVERIFY(window.rect().contains(list->geometry()));
        QVERIFY(list->height() < 20 * list->sizeHintForRow(0));
        for (int press = 0; press < 20; ++press) {
            Press(window, Qt::Key_Down);
        }
        QCOMPARE(SelectedProposal(window), 19);
        const auto isInSight = [&](int row) {
            const QRect item = list->visualItemRect(list->item(row));
            return item.left() == 0 && item.top() >= 0 && item.bottom() <= list->viewport()->height();
        };
        QVERIFY(isInSight(19));
        Type(window, "x");
        QVERIFY(isInSight(0));
    }

    void hiddenWindow_closesTheList()
    {
        CompletedBox window(false);
        Type(window, "b");
        window.hide();
        window.show();
        AwaitActive(window);
        QVERIFY(Proposals(window) == nullptr);
    }
};

TEST_CLASS(tst_TextCompleter)
#include "tst_TextCompleter.moc"
