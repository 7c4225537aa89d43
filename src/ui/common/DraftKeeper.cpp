#include "DraftKeeper.h"

#include "backup/BackUpNames.h"
#include "core/Error.h"
#include "core/Paths.h"

#include <chrono>
#include <utility>

namespace Tarno
{

namespace
{

/// Runs `body`. A draft is a help, so the user is not disturbed if it cannot be written or removed.
template <typename Body>
void WithoutReport(Body&& body)
{
    try {
        std::forward<Body>(body)();
    } catch (const std::exception&) { // NOLINT(bugprone-empty-catch)
    }
}

} // namespace

DraftKeeper::DraftKeeper(const Program& program, RecordTitle::Kind kind, TypedTexts typed, QObject* parent)
    : QObject(parent), m_program(program), m_typed(std::move(typed))
{
    m_draft.kind = kind;
    m_timer.setParent(this);
    m_timer.setObjectName(QStringLiteral("tDraft"));
    m_timer.setSingleShot(true);
    m_timer.setInterval(std::chrono::seconds(20));
    connect(&m_timer, &QTimer::timeout, this, [this] { WithoutReport([this] { Write(); }); });
}

void DraftKeeper::Begin(const StoredTexts& stored)
{
    m_timer.stop();
    m_draft.key = stored.empty() ? std::string() : stored.front();
    m_draft.before = m_draft.key == "0" ? StoredTexts() : stored;
    m_isOwn = false;
}

void DraftKeeper::Continue(const Draft& draft)
{
    const StoredTexts stored = std::exchange(m_draft, draft).before;
    if (!stored.empty()) { // not if the record was deleted
        m_draft.before = stored;
    }
    m_isOwn = true;
}

void DraftKeeper::NoteChange()
{
    if (!m_timer.isActive()) {
        m_timer.start();
    }
}

void DraftKeeper::Discard()
{
    m_timer.stop();
    if (std::exchange(m_isOwn, false)) {
        WithoutReport([this] { m_program.drafts.Remove(m_draft); });
    }
}

void DraftKeeper::Write()
{
    std::optional<StoredTexts> typed = m_typed();
    if (!typed) {
        Discard();
        return;
    }
    if (!m_isOwn) {
        m_draft.dataFolder = LogOfDrafts(m_program);
        m_draft.number = 1;
        while (m_program.drafts.Exists(m_draft)) { // the user was asked about it and answered "Later"
            ++m_draft.number;
        }
        m_isOwn = true;
    }
    m_draft.values = std::move(*typed);
    m_draft.written = ToText({m_program.clock.Today(), m_program.clock.TimeOfDay()});
    m_program.drafts.Write(m_draft);
}

std::string LogOfDrafts(const Program& program)
{
    return Resolved(program.folder.GetAppPath());
}

} // namespace Tarno
