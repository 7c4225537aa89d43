#include "ValueTable.h"

#include "qt/Strings.h"

#include <QTextCursor>
#include <QTextDocument>
#include <QTextEdit>
#include <QTextTable>

namespace Tarno
{

void MakeReadable(QTextEdit& box)
{
    box.setReadOnly(true);
    box.setTabChangesFocus(true);
    box.document()->setDocumentMargin(readableMargin);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
}

void InsertValues(QTextCursor& cursor, const std::vector<DescribedValue>& values)
{
    QTextTableFormat format;
    format.setBorderStyle(QTextFrameFormat::BorderStyle_None);
    format.setCellPadding(2);
    format.setCellSpacing(0);
    QTextTable* table = cursor.insertTable(static_cast<int>(values.size()), 2, format);
    QTextCharFormat caption;
    caption.setFontWeight(QFont::Bold);
    int row = 0;
    for (const DescribedValue& value : values) {
        table->cellAt(row, 0).firstCursorPosition().insertText(FromUtf8(value.caption), caption);
        table->cellAt(row, 1).firstCursorPosition().insertText(FromUtf8(value.text));
        ++row;
    }
}

} // namespace Tarno
