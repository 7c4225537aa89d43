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

/// The frame in which a report gets the name to be saved under.
class SaveFrame : public QFrame
{
    Q_OBJECT

public:
    explicit SaveFrame(QWidget* parent = nullptr);
    SaveFrame(const SaveFrame&) = delete;
    SaveFrame& operator=(const SaveFrame&) = delete;
    ~SaveFrame() override;

    /// Shows the frame over its siblings. `selected` is the name of the selected report, which is replaced
    /// unless the user wants a new one. Without `anySaved`, only a new one is possible.
    void Open(const std::optional<QString>& selected, bool anySaved);
    /// Presses "Cancel".
    void Cancel();

    /// Whether the user wants a new report.
    bool IsNew() const;
    /// The name as typed.
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
