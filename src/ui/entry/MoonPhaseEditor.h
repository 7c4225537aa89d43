#pragma once

#include "ui/common/EditedRecord.h"

#include <QObject>

class QCheckBox;
class QLineEdit;

namespace Tarno
{

/// Binds the two controls of the moon phase, lit percentage and "Waxing", to the stored value: the
/// percentage, negative for a waning moon. Three functions store it, and they differ at 0 % for a waning
/// moon; see docs/quirks.md.
class MoonPhaseEditor : public QObject
{
    Q_OBJECT

public:
    /// The references and controls must outlive the object.
    MoonPhaseEditor(QLineEdit* percent, QCheckBox* waxing, EditedRecord& record);

    /// Shows the stored value. Leaves the box empty if the value is not a number.
    void ShowRecord();
    /// Shows a calculated phase and stores its percentage without a sign.
    void ShowAndStoreForecast(int percent, bool waxing);
    /// Stores the shown percentage, prefixed with "-" for a waning moon. Called on each change by the user.
    /// Errors are reported through ErrorLog.
    void PhaseChange();
    /// Stores the percentage times 1 or -1. Called after the start date changed. Does nothing if the box is
    /// empty.
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
