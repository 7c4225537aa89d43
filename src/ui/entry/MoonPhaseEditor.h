#pragma once

#include "ui/common/EditedRecord.h"

#include <QObject>

class QCheckBox;
class QLineEdit;

namespace Tarno
{

/// The two controls of an entry's moon phase, lit percentage and "Waxing", and the record's value: the
/// percentage, negative while waning. The value has three writers, which differ at 0 % while waning; see
/// docs/quirks.md.
class MoonPhaseEditor : public QObject
{
    Q_OBJECT

public:
    /// The references and controls must outlive the object.
    MoonPhaseEditor(QLineEdit* percent, QCheckBox* waxing, EditedRecord& record);

    /// Shows the record's value. A text that is no number leaves the box empty.
    void ShowRecord();
    /// Shows a calculated phase and stores its percentage without a sign.
    void PutForecast(int percent, bool waxing);
    /// Stores what the controls show: the percentage, with "-" in front while waning. Runs on each change by
    /// the user. Errors are reported through ErrorLog.
    void PhaseChange();
    /// Stores the percentage times 1 or -1, as a changed start date does. An empty box changes nothing.
    void SignPhase();

Q_SIGNALS:
    /// The user changed the value.
    void Changed();

private:
    void ShowValue(const QString& percent, bool waxing);

    QLineEdit* m_percent;
    QCheckBox* m_waxing;
    EditedRecord& m_record;
};

} // namespace Tarno
