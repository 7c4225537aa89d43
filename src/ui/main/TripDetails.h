#pragma once

#include "analysis/TripDescription.h"

#include <QImage>
#include <QString>
#include <QTimer>
#include <QWidget>

#include <vector>

class QTextEdit;

namespace Tarno
{

/// A pane that shows a trip in readable form: its picture, if any, above words instead of codes. The text can
/// be scrolled, selected and copied, but not edited.
class TripDetails : public QWidget
{
    Q_OBJECT

public:
    explicit TripDetails(QWidget* parent = nullptr);

    /// Shows a trip. `picture` is the path of its picture file, or empty. The picture follows shortly after,
    /// so that moving through the log is not slowed down.
    void ShowTrip(std::vector<DescribedValue> values, const QString& picture);
    /// Shows that no trip is selected.
    void ShowNothing();

    QSize sizeHint() const override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void LoadPicture();
    void Render();

    bool m_hasTrip = false;
    std::vector<DescribedValue> m_values;
    QString m_picturePath;
    QImage m_picture;
    QString m_problem; ///< why there is no picture
    QTimer m_pictureTimer;
    QTextEdit* m_text;
};

} // namespace Tarno
