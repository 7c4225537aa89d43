#include "MoonPhaseEditor.h"

#include "EntryModule.h"
#include "core/Conversions.h"
#include "core/ErrorLog.h"
#include "qt/Strings.h"
#include "store/EntryFields.h"
#include "ui/common/Handle.h"
#include "ui/common/KeyFilter.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QSignalBlocker>

#include <cstdlib>

namespace Tarno
{

MoonPhaseEditor::MoonPhaseEditor(QLineEdit* percent, QCheckBox* waxing, EditedRecord& record)
    : m_percent(percent), m_waxing(waxing), m_record(record)
{
    new KeyFilter(percent, {});
    Handle(percent, &QLineEdit::textChanged, "Change", this, [this] { PhaseChange(); });
    Handle(waxing, &QCheckBox::toggled, "Click", this, [this] { PhaseChange(); });
}

void MoonPhaseEditor::ShowValue(const QString& percent, bool waxing)
{
    KeyFilter::SetText(m_percent, percent);
    const QSignalBlocker blocker(m_waxing);
    m_waxing->setChecked(waxing);
}

void MoonPhaseEditor::ShowRecord()
{
    QString percent;
    bool waxing = true;
    try {
        const int phase = ToInt16(m_record.Text(EntryField::MoonPhase));
        percent = QString::number(std::abs(phase));
        waxing = phase >= 0;
    } catch (const Error& error) {
        if (error.Number() == ErrorNumber::ObjectNotSet) {
            throw;
        }
    }
    ShowValue(percent, waxing);
}

void MoonPhaseEditor::ShowAndStoreForecast(int percent, bool waxing)
{
    ShowValue(QString::number(percent), waxing);
    m_record.Store(EntryField::MoonPhase, std::to_string(percent));
}

void MoonPhaseEditor::PhaseChange()
{
    Trap(entryModule, "PhaseChange", [this] {
        const std::string percent = ToUtf8(m_percent->text());
        const bool isWaning = !percent.empty() && !m_waxing->isChecked();
        if (m_record.Store(EntryField::MoonPhase, (isWaning ? "-" : "") + percent)) {
            Q_EMIT Changed();
        }
    });
}

void MoonPhaseEditor::SignPhase()
{
    const std::string percent = ToUtf8(m_percent->text());
    if (!percent.empty()) {
        m_record.Store(EntryField::MoonPhase,
                       std::to_string(ToInt16(percent) * (m_waxing->isChecked() ? 1 : -1)));
    }
}

} // namespace Tarno
