#include "EveryOperation.h"
#include "safety/Form.h"
#include "support/TestClass.h"

#include <set>

using namespace Tarno;

// Each shipped file, truncated at each byte, as after a full disk, an early removal of a USB stick or an
// interrupted copy.

namespace
{

/// Returns the lengths to which a file of `size` bytes is truncated: all lengths, or for a large file those
/// near both ends and some in between.
std::set<std::size_t> Lengths(std::size_t size)
{
    constexpr std::size_t small = 1000;
    constexpr std::size_t end = 300;
    constexpr std::size_t between = 100;
    std::set<std::size_t> lengths;
    for (std::size_t length = 0; length <= size; ++length) {
        if (IsLongForm() || size <= small || length < end || length + end >= size ||
            length % (size / between) == 0) {
            lengths.insert(length);
        }
    }
    return lengths;
}

} // namespace

class tst_TruncatedFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void truncatedFile_isReadOrNeverOverwritten_data()
    {
        QTest::addColumn<std::string>("shipped");
        QTest::addColumn<std::string>("file");
        for (const std::string name : dataFiles) {
            QTest::newRow(name.c_str()) << name << name;
        }
        for (const std::string name : {"tarno.xml", "location.xml", "Rpt.xml"}) {
            QTest::newRow(("sample " + name).c_str()) << "sample/" + name << name;
        }
    }

    void truncatedFile_isReadOrNeverOverwritten()
    {
        QFETCH(std::string, shipped);
        QFETCH(std::string, file);
        const std::string whole = ShippedFile(shipped);
        const std::size_t readableFrom = whole.rfind('>') + 1; // only a line end follows
        const TemporaryFolder folder;
        CopyShipped(folder);
        const std::vector<std::string> names = folder.Names();
        int turn = 0;
        for (const std::size_t length : Lengths(whole.size())) {
            const std::string cut = whole.substr(0, length);
            const bool all = ++turn % 500 == 0;
            if (all) {
                CopyShipped(folder);
            }
            folder.Write(file, cut);
            const bool readable = length >= readableFrom;
            const std::string broken = readable ? m_trial.RunOnReadable(folder.Path(), file, all)
                                                : m_trial.RunOnUnreadable(folder.Path(), file, all);
            const std::string after = folder.Read(file);
            const std::string fault = readable ? ReadXml(after).fault : after == cut ? "" : "changed";
            ++(readable ? m_readable : m_unreadable);
            if (!broken.empty() || !fault.empty() || folder.Names() != names) {
                QFAIL(("cut to " + std::to_string(length) + " bytes: " + broken + fault).c_str());
            }
        }
    }

    void cleanupTestCase()
    {
        qInfo("%d truncated files that cannot be read, %d that can, %d operations", m_unreadable, m_readable,
              m_trial.Count());
    }

private:
    OperationTrial m_trial;
    int m_unreadable = 0;
    int m_readable = 0;
};

TEST_CLASS(tst_TruncatedFiles)
#include "tst_TruncatedFiles.moc"
