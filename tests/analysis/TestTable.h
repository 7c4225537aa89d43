#pragma once

#include <QFile>
#include <QString>
#include <QStringList>

#include <vector>

namespace Tarno
{

/// Returns the rows of a file of tests/analysis/data without the names of the columns.
inline std::vector<QStringList> TestTable(const char* name)
{
    QFile file(QStringLiteral(TARNO_SHIPPED_DATA "/../tests/analysis/data/") + QLatin1String(name));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        qFatal("cannot read %s", name);
    }
    file.readLine();
    std::vector<QStringList> rows;
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine());
        rows.push_back(line.chopped(line.endsWith(QLatin1Char('\n')) ? 1 : 0).split(QLatin1Char('\t')));
    }
    return rows;
}

} // namespace Tarno
