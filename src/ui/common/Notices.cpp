#include "Notices.h"

#include "qt/Strings.h"

#include <QApplication>

namespace Tarno
{

namespace
{

/// For example "the trip of 2026-05-03 at Old Pier".
QString DescribeRecord(const ConflictNotice& conflict)
{
    using Kind = ConflictNotice::Kind;
    const QString name = ShownInOneLine(conflict.name);
    switch (conflict.kind) {
    case Kind::Trip:
        return QStringLiteral("the trip of ") + FromUtf8(conflict.date) +
               (name.isEmpty() ? QString() : QStringLiteral(" at ") + name);
    case Kind::Location:
        return QStringLiteral("the location ") + name;
    case Kind::Column:
        return QStringLiteral("the column ") + name;
    case Kind::Report:
        return QStringLiteral("the report ") + name;
    }
    return {};
}

} // namespace

void ShowConflict(const ConflictNotice& conflict, MessageBoxes& messages)
{
    const QString record = DescribeRecord(conflict);
    QString text;
    if (conflict.keptAs.empty()) {
        text = QStringLiteral("Another program has deleted ") + record +
               QStringLiteral(", which you have changed.\r\n\r\nYour version was restored.");
    } else if (conflict.isDeletedHere) {
        text = QStringLiteral("Another program has changed ") + record +
               QStringLiteral(", which you have deleted.\r\n\r\nIt remains deleted. The other program's "
                              "version is stored in:\r\n") +
               FromUtf8(conflict.keptAs);
    } else {
        text =
            QStringLiteral("You and another program have both changed ") + record +
            QStringLiteral(".\r\n\r\nYour version was saved. The other program's version is stored in:\r\n") +
            FromUtf8(conflict.keptAs);
    }
    messages.ShowInformation(QApplication::activeWindow(), text, QStringLiteral("Tarno"));
}

} // namespace Tarno
