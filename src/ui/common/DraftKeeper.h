#pragma once

#include "backup/Drafts.h"
#include "ui/common/Program.h"

#include <QObject>
#include <QTimer>

#include <functional>
#include <optional>

namespace Tarno
{

/// Writes what the user types into an editing window to a draft: 20 seconds after the first change that no
/// draft has yet. Nothing is shown if that fails.
class DraftKeeper : public QObject
{
    Q_OBJECT

public:
    /// Returns the values as the user sees them, or nothing if nothing has changed.
    using TypedTexts = std::function<std::optional<StoredTexts>()>;

    /// What `program` refers to must outlive the object.
    DraftKeeper(const Program& program, RecordTitle::Kind kind, TypedTexts typed, QObject* parent);

    /// Begins with a record that has the values `stored`. Its key is "0" if it is new.
    void Begin(const StoredTexts& stored);

    /// Keeps what the user types after Begin in the existing draft `draft`.
    void Continue(const Draft& draft);

    /// The user may have changed something.
    void NoteChange();

    /// Removes the draft, if any, because it is not needed any more.
    void Discard();

private:
    void Write();

    const Program& m_program;
    TypedTexts m_typed;
    QTimer m_timer;
    Draft m_draft;
    bool m_isOwn = false; ///< whether the draft on disk, if any, belongs to this window
};

/// Returns the text that identifies the log in its drafts. Throws Error if its folder cannot be resolved.
std::string LogOfDrafts(const Program& program);

} // namespace Tarno
