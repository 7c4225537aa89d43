#include "PlaceName.h"

#include "analysis/TripText.h"
#include "core/Text.h"

#include <QString>

namespace Tarno
{

std::string ComparedName(std::string_view stored)
{
    const QString name = QString::fromStdString(mMain::DecodeLineBreaks(stored));
    return Fold(name.simplified().toStdString());
}

} // namespace Tarno
