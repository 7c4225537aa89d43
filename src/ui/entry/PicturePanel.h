#pragma once

#include "ui/common/EditedRecord.h"
#include "ui/common/Program.h"

#include <QWidget>

#include <cstddef>
#include <memory>

namespace Tarno
{

class PictureSource;
class PictureSurface;

namespace Ui
{
class PicturePanel;
}

/// A picture in a frame, with zoom, scroll bars, and buttons to choose and remove it. The record stores the
/// path of the file. A relative path is resolved against the program folder.
class PicturePanel : public QWidget
{
    Q_OBJECT

public:
    explicit PicturePanel(QWidget* parent = nullptr);
    PicturePanel(const PicturePanel&) = delete;
    PicturePanel& operator=(const PicturePanel&) = delete;
    ~PicturePanel() override;

    /// Binds the panel to the path at `position` of `record`. Call once. `surfaceName` and `sourceName` are
    /// the object names of the visible picture and of its hidden source. `focusAfterRemove` gets the focus
    /// after the user removes the picture.
    void Attach(const Program& program, EditedRecord& record, std::size_t position,
                const QString& surfaceName, const QString& sourceName, QWidget* focusAfterRemove);

    /// Empties the panel.
    void Reset();
    /// Shows the picture of the record at its natural size and enables the buttons. If the file does not
    /// exist, leaves the panel empty without a message.
    void ShowRecord();

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    /// The user chose or removed the picture.
    void PictureChanged();

private:
    void ChoosePicture();
    void RemovePicture();
    void StorePath(const std::string& path);
    void LoadPicture();
    void ApplyZoom();
    void ScrollbarStuff();
    void SetScrollbarsEnabled();
    void SetSliderEnabled();
    void PlaceByScrollbars();
    void SetZoomToMaximum();
    QString PicturePath() const;
    QRect VisibleArea() const;
    void ResizeToPicture();
    template <typename Body>
    void RunWithProblemMessage(Body&& body);

    std::unique_ptr<Ui::PicturePanel> m_ui;
    PictureSource* m_source;
    PictureSurface* m_surface;
    const Program* m_program = nullptr;
    EditedRecord* m_record = nullptr;
    QWidget* m_focusAfterRemove = nullptr;
    std::size_t m_position = 0;
    bool m_isNewlyChosen = false; ///< chosen in the dialog, not loaded with the record
};

} // namespace Tarno
