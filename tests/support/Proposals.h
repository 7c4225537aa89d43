#pragma once

#include "support/Windows.h"

#include <QListWidget>

#include <string>
#include <vector>

namespace Tarno
{

// Helpers for the list of proposals that opens while the user types.

/// Returns the open list of proposals of `window`, or null.
inline QListWidget* Proposals(const QWidget& window)
{
    for (auto* list : window.findChildren<QListWidget*>(QStringLiteral("lstProposals"))) {
        if (list->isVisible()) {
            return list;
        }
    }
    return nullptr;
}

/// Returns the proposals that are shown, from top to bottom.
inline std::vector<std::string> ProposedTexts(const QWidget& window)
{
    std::vector<std::string> texts;
    if (const QListWidget* list = Proposals(window); list != nullptr) {
        for (int row = 0; row < list->count(); ++row) {
            texts.push_back(list->item(row)->text().toStdString());
        }
    }
    return texts;
}

/// Returns the row of the selected proposal, -1 if none is selected, or -2 if no list is open.
inline int SelectedProposal(const QWidget& window)
{
    const QListWidget* list = Proposals(window);
    return list == nullptr ? -2 : list->currentRow();
}

inline void ClickProposal(QWidget& window, int row)
{
    const QListWidget* list = Proposals(window);
    if (list == nullptr) {
        qFatal("no proposals");
    }
    const QPoint place = list->visualItemRect(list->item(row)).center();
    QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, list->viewport()->mapTo(&window, place));
}

inline void CloseProposals(const QWidget& window)
{
    if (Proposals(window) != nullptr) {
        Press(window, Qt::Key_Escape);
    }
}

} // namespace Tarno
