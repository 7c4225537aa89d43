#pragma once

#include <QFrame>
#include <QString>

#include <memory>
#include <optional>

namespace Tarno
{

namespace Ui
{
class SaveFrame;
}

/// The frame in which the user enters the name for saving a report.
class SaveFrame : public QFrame
{
    Q_OBJECT

public:
    explicit SaveFrame(QWidget* parent = nullptr);
    SaveFrame(const SaveFrame&) = delete;
    SaveFrame& operator=(const SaveFrame&) = delete;
    ~SaveFrame() override;

    /// Shows the frame over its siblings. `selected` is the name of the selected report, which is replaced
    /// unless the user asks for a new one. If `anySaved` is false, only a new report is possible.
    void Open(const std::optional<QString>& selected, bool anySaved);
    /// Presses "Cancel".
    void Cancel();

    /// Returns whether the user asks for a new report.
    bool IsNew() const;
    /// Returns the name as typed.
    QString Description() const;

Q_SIGNALS:
    void Confirmed();
    void Cancelled();

private:
    void txtSaved_Change();
    void chkNew_Click();

    std::unique_ptr<Ui::SaveFrame> m_ui;
    std::optional<QString> m_selected;
};

} // namespace Tarno
