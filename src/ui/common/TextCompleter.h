#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>

class QListWidget;
class QWidget;

namespace Tarno
{

/// Proposes texts in a list below the cursor while the user types in a QLineEdit or QPlainTextEdit. The box
/// keeps the focus and typing goes on. No proposal is selected at first: Down or Up selects one, and then Tab
/// or Enter takes it, as does a click. Esc closes the list.
class TextCompleter : public QObject
{
    Q_OBJECT

public:
    struct Proposals {
        int position = 0; ///< of the characters that a proposal replaces
        int length = 0;
        QStringList texts = {};
    };

    /// Returns the proposals for the current line of the box with the cursor at `cursor`.
    using Propose = std::function<Proposals(const QString& line, int cursor)>;

    /// The box owns the completer. The list is a child of the window of the box.
    TextCompleter(QWidget* box, Propose propose);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void ShowProposalsLater();
    void ShowDueProposals();
    void ShowProposals();
    void MakeList();
    void Place();
    bool IsOpen() const;
    bool HandlesKey(int key) const;
    void HandleKey(int key);
    void Take();
    void Close();

    QWidget* m_box;
    Propose m_propose;
    Proposals m_proposals;
    bool m_areDue = false;         ///< whether the text has changed since proposals were shown
    QListWidget* m_list = nullptr; ///< created with the first proposals
};

} // namespace Tarno
