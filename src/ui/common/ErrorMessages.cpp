#include "ErrorMessages.h"

#include <QAbstractEventDispatcher>
#include <QScopedValueRollback>

#include <utility>

namespace Tarno
{

ErrorMessages::ErrorMessages(ErrorReporter::ShowMessage show)
{
    ErrorReporter::Instance().SetShowMessage(
        [this, show = std::move(show)](const std::string& text, const std::string& title) {
            const QScopedValueRollback shown(m_shown, m_shown + 1);
            show(text, title);
        });
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this, [this] {
        if (m_shown == 0) {
            ErrorReporter::Instance().AllowRepetition();
        }
    });
}

} // namespace Tarno
