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

/// A picture in a frame, with zoom, scroll bars, and the buttons that choose and remove it. The record
/// stores the path of the file; a relative path is taken from the program folder.
class PicturePanel : public QWidget
{
    Q_OBJECT

public:
    explicit PicturePanel(QWidget* parent = nullptr);
    PicturePanel(const PicturePanel&) = delete;
    PicturePanel& operator=(const PicturePanel&) = delete;
    ~PicturePanel() override;

    /// To be called once: the record's child at `position` holds the path; `surfaceName` and `sourceName` are
    /// the object names of the picture shown and of the hidden one that it is drawn from; `focusAfterRemove`
    /// gets the focus when the user removed it.
    void Attach(const Program& program, EditedRecord& record, std::size_t position,
                const QString& surfaceName, const QString& sourceName, QWidget* focusAfterRemove);

    /// Empties the panel.
    void Reset();
    /// Shows the record's picture at its natural size and sets the buttons. A file that is not there
    /// leaves the panel empty without a word.
    void ShowRecord();

Q_SIGNALS:
    /// The record got another picture, or none.
    void PictureChanged();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void ChoosePicture();
    void RemovePicture();
    void TakePath(const std::string& path);
    void LoadPicture();
    void ApplyZoom();
    void ScrollbarStuff();
    void SetScrollbarsEnabled();
    void SetSliderEnabled();
    void PlaceByScrollbars();
    void SetZoomToMaximum();
    QString PicturePath() const;
    QRect VisibleArea() const;
    void SizeToPicture();
    template <typename Body>
    void Guarded(Body&& body);

    std::unique_ptr<Ui::PicturePanel> m_ui;
    PictureSource* m_source;
    PictureSurface* m_surface;
    const Program* m_program = nullptr;
    EditedRecord* m_record = nullptr;
    QWidget* m_focusAfterRemove = nullptr;
    std::size_t m_position = 0;
    bool m_shownAsChosen = false; ///< the picture in view came from the dialog, not with the record
};

} // namespace Tarno
