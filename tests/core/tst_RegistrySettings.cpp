#include "core/FileOperations.h"
#include "core/SettingsStore.h"
#include "support/StdStrings.h"
#include "support/TestClass.h"

#include <windows.h>

using namespace Tarno;

using namespace std::string_literals;

namespace
{

/// Reads a value directly from the registry as UTF-16. Returns nullopt if it does not exist.
std::optional<QString> InRegistry(const std::string& section, const wchar_t* name)
{
    const std::wstring key = L"Control Panel\\" + QString::fromStdString(section).toStdWString();
    std::array<wchar_t, 1000> text{};
    DWORD size = sizeof text;
    if (::RegGetValueW(HKEY_CURRENT_USER, key.c_str(), name, RRF_RT_REG_SZ, nullptr, text.data(), &size) !=
        ERROR_SUCCESS) {
        return std::nullopt;
    }
    return QString::fromWCharArray(text.data());
}

} // namespace

// The settings in the registry of the current user, in a section for this process.
class tst_RegistrySettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_store->RemoveSection(m_section); }

    void cleanupTestCase() { m_store->RemoveSection(m_section); }

    void notWritten_isNullopt()
    {
        QVERIFY(!m_store->Read(m_section, "XTidePath"));
        QVERIFY(!m_store->Values(m_section));
        m_store->RemoveValue(m_section, "XTidePath");
        m_store->RemoveSection(m_section);
        QVERIFY(!m_store->Values(m_section)); // reading and removing do not create the section
    }

    void written_isReadBack_data()
    {
        QTest::addColumn<std::string>("text");
        QTest::newRow("a path") << R"(C:\Program Files\WXTide32\WXTide32.exe)"s;
        QTest::newRow("non-ASCII") << "C:\\caf\u00E9\\tides.exe"s;
        QTest::newRow("nothing") << ""s;
        QTest::newRow("blanks") << "  "s;
        QTest::newRow("long") << std::string(20'000, 'x');
    }

    void written_isReadBack()
    {
        QFETCH(std::string, text);
        m_store->Write(m_section, "XTidePath", "before");
        m_store->Write(m_section, "XTidePath", text);
        QCOMPARE(m_store->Read(m_section, "XTidePath"), std::optional(text));
    }

    void written_isStoredAsARegistryString()
    {
        m_store->Write(m_section, "XTidePath", "C:\\caf\u00E9\\tides.exe");
        QCOMPARE(InRegistry(m_section, L"XTidePath"),
                 std::optional(QStringLiteral("C:\\caf\u00E9\\tides.exe")));
    }

    void values_listsNamesAndTexts()
    {
        m_store->Write(m_section, "one", "1");
        m_store->Write(m_section, "two \u00E9", "zw\u00F6lf");
        m_store->Write(m_section, "none", "");
        const auto values = m_store->Values(m_section);
        QVERIFY(values);
        std::map<std::string, std::string> listed;
        for (const auto& value : *values) {
            listed[value.name] = value.text;
        }
        const std::map<std::string, std::string> expected{
            {"one", "1"}, {"two \u00E9", "zw\u00F6lf"}, {"none", ""}};
        QVERIFY(listed == expected);
    }

    void removeValue_removesOnlyThatValue()
    {
        m_store->Write(m_section, "one", "1");
        m_store->Write(m_section, "two", "2");
        m_store->RemoveValue(m_section, "one");
        QVERIFY(!m_store->Read(m_section, "one"));
        QCOMPARE(m_store->Read(m_section, "two"), std::optional("2"s));
    }

    void removeSection_removesItsValues()
    {
        m_store->Write(m_section, "one", "1");
        m_store->RemoveSection(m_section);
        QVERIFY(!m_store->Read(m_section, "one"));
        QVERIFY(!m_store->Values(m_section));
        QVERIFY(!InRegistry(m_section, L"one"));
    }

    void valueOfAnotherType_isReadAsBytes()
    {
        m_store->Write(m_section, "one", "1");
        const std::wstring key = L"Control Panel\\" + QString::fromStdString(m_section).toStdWString();
        const DWORD number = 0;
        QCOMPARE(
            ::RegSetKeyValueW(HKEY_CURRENT_USER, key.c_str(), L"number", REG_DWORD, &number, sizeof number),
            0L);
        const auto read = m_store->Read(m_section, "number");
        QVERIFY(read);
        QCOMPARE(*read, std::string(3, '\0')); // the last byte is dropped like the terminator of a text
    }

private:
    std::unique_ptr<FileOperations> m_operations = SystemFileOperations();
    std::unique_ptr<SettingsStore> m_store = SystemSettingsStore(*m_operations);
    const std::string m_section = "TarnoTest" + std::to_string(::GetCurrentProcessId());
};

TEST_CLASS(tst_RegistrySettings)
#include "tst_RegistrySettings.moc"
