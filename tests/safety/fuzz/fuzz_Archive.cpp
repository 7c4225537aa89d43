#include "Require.h"
#include "backup/Archive.h"
#include "backup/ArchiveNames.h"
#include "backup/Restore.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <cstdio>
#include <set>

using namespace Tarno;

namespace
{

constexpr ArchiveLimits limits{.entries = 20, .entryBytes = 100'000, .totalBytes = 200'000};

std::string InputPath()
{
    static const std::string path = QStringLiteral("%1/tarno-fuzz-%2.zip")
                                        .arg(QDir::tempPath())
                                        .arg(QCoreApplication::applicationPid())
                                        .toStdString();
    return path;
}

void CheckEntries(const ArchiveReader& archive)
{
    std::set<std::string> names;
    std::uint64_t total = 0;
    for (const ArchiveEntry& entry : archive.Entries()) {
        Require(NameFault(entry.name).empty(), "every name is harmless");
        Require(names.insert(CaseKey(entry.name)).second, "every name is unique");
        Require(entry.size <= limits.entryBytes, "no entry is too large");
        std::uint64_t size = 0;
        try {
            archive.Read(entry, [&](std::string_view block) {
                size += block.size();
                Require(size <= entry.size, "no more than the size is decompressed");
            });
            Require(size == entry.size, "an entry is complete");
        } catch (const ArchiveProblem& problem) {
            Require(problem.Description().ends_with('.'), "a problem is a sentence");
        }
        total += size;
    }
    Require(total <= limits.totalBytes, "the archive is not too large");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    QFile file(QString::fromStdString(InputPath()));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) ||
        file.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size)) !=
            static_cast<qint64>(size)) {
        std::abort();
    }
    file.close();
    try {
        const ArchiveReader archive(InputPath(), limits);
        CheckEntries(archive);
    } catch (const ArchiveProblem& problem) {
        Require(problem.Description().ends_with('.'), "a problem is a sentence");
    }
    try {
        const BackUpArchive backUp(InputPath());
        Require(backUp.PictureCount() <= backUp.Archive().Entries().size(), "a picture is an entry");
    } catch (const ArchiveProblem& problem) {
        Require(!problem.Description().empty(), "a problem is explained");
    }
    file.remove();
    return 0;
}
