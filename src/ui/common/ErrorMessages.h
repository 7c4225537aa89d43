#pragma once

#include "core/ErrorLog.h"

#include <QObject>

namespace Tarno
{

/// Shows the messages of the error reporter with a function, and allows each message to be repeated as soon
/// as the program waits for its user, except while a message is shown.
class ErrorMessages : public QObject
{
    Q_OBJECT

public:
    explicit ErrorMessages(ErrorReporter::ShowMessage show);

private:
    int m_shown = 0; ///< number of messages on screen
};

} // namespace Tarno
