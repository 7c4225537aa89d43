#include "core/CRegSettings.h"
#include "core/SettingsFile.h"
#include "support/ExpectedReports.h"
#include "support/ScriptedFileOperations.h"
#include "support/TemporaryFolder.h"
#include "support/TestClass.h"

using namespace Tarno;

using namespace std::string_literals;

namespace
{

using Texts = std::vector<std::string>;

/// Settings in a temporary file.
struct Settings {
    TemporaryFolder folder;
    ScriptedFileOperations operations;
    SettingsFile store{folder.PathOf("settings.xml"), operations};
    CRegSettings settings{store};
    ExpectedReports reports;

    /// Returns the names and texts of the values of a section, alternating.
    Texts All(std::string_view section)
    {
        Texts texts;
        for (const Setting& value : settings.GetAllSettings(section).value_or(std::vector<Setting>())) {
            texts.push_back(value.name);
            texts.push_back(value.text);
        }
        return texts;
    }
};

/// A store whose operations all fail.
class BrokenStore final : public SettingsStore
{
public:
    std::optional<std::string> Read(std::string_view, std::string_view) override { return Broken(), ""; }

    void Write(std::string_view, std::string_view, std::string_view) override { Broken(); }

    std::optional<std::vector<Setting>> Values(std::string_view) override
    {
        Broken();
        return std::vector<Setting>();
    }

    void RemoveSection(std::string_view) override { Broken(); }

    void RemoveValue(std::string_view, std::string_view) override { Broken(); }

private:
    static void Broken() { throw Error(ErrorNumber::OutOfMemory); }
};

} // namespace

class tst_CRegSettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void getSetting_neverSaved_isTheDefault()
    {
        Settings test;
        QCOMPARE(test.settings.GetSetting("KOWRA", "XTidePath", "none"), "none"s);
        test.settings.SaveSetting("KOWRA", "Other", "x");
        QCOMPARE(test.settings.GetSetting("KOWRA", "XTidePath", "none"), "none"s);
        QCOMPARE(test.settings.GetSetting("Else", "Other", ""), ""s);
    }

    void getSetting_saved_isItsText()
    {
        Settings test;
        for (const std::string& text : {R"(C:\Tides\WXTide32.exe)"s, " blanks around "s, "   "s, "<&>\"'"s,
                                        "line\r\nline\tend"s, "\u9BDB"s}) {
            test.settings.SaveSetting("KOWRA", "XTidePath", text);
            QCOMPARE(test.settings.GetSetting("KOWRA", "XTidePath", "none"), text);
        }
    }

    void getSetting_savedEmpty_isEmptyNotTheDefault()
    {
        Settings test;
        test.settings.SaveSetting("KOWRA", "XTidePath", "");
        QCOMPARE(test.settings.GetSetting("KOWRA", "XTidePath", "none"), ""s);
    }

    void saveSetting_again_replacesTheText()
    {
        Settings test;
        test.settings.SaveSetting("KOWRA", "XTidePath", "old");
        test.settings.SaveSetting("KOWRA", "XTidePath", "new");
        QCOMPARE(test.All("KOWRA"), (Texts{"XTidePath", "new"}));
    }

    void saveSetting_star_isTheUnnamedValue()
    {
        Settings test;
        test.settings.SaveSetting("KOWRA", "*", "unnamed");
        QCOMPARE(test.settings.GetSetting("KOWRA", "*", "none"), "unnamed"s);
        QCOMPARE(test.settings.GetSetting("KOWRA", "", "none"), "unnamed"s);
        QCOMPARE(test.All("KOWRA"), (Texts{"", "unnamed"}));
    }

    void saveSetting_emptySection_isTheRoot()
    {
        Settings test;
        test.settings.SaveSetting("", "XTidePath", "root");
        test.settings.SaveSetting("KOWRA", "XTidePath", "section");
        QCOMPARE(test.settings.GetSetting("", "XTidePath", "none"), "root"s);
        QCOMPARE(test.All(""), (Texts{"XTidePath", "root"}));
    }

    void names_ignoreCase()
    {
        Settings test;
        test.settings.SaveSetting("KOWRA", "XTidePath", "old");
        test.settings.SaveSetting("kowra", "xtidepath", "new");
        QCOMPARE(test.settings.GetSetting("Kowra", "XTIDEPATH", "none"), "new"s);
        QCOMPARE(test.All("KOWRA"), (Texts{"XTidePath", "new"}));
    }

    void getAllSettings_listsValuesInOrderOfSaving()
    {
        Settings test;
        test.settings.SaveSetting("KOWRA", "z", "1");
        test.settings.SaveSetting("KOWRA", "a", "");
        test.settings.SaveSetting("Else", "other", "x");
        test.settings.SaveSetting("KOWRA", "m", "3");
        QCOMPARE(test.All("KOWRA"), (Texts{"z", "1", "a", "", "m", "3"}));
    }

    void getAllSettings_missingSection_isNullopt()
    {
        Settings test;
        QVERIFY(!test.settings.GetAllSettings("KOWRA"));
        test.settings.SaveSetting("KOWRA", "XTidePath", "x");
        test.settings.DeleteSetting("KOWRA", "XTidePath");
        QVERIFY(!test.settings.GetAllSettings("Else"));
        QVERIFY(test.settings.GetAllSettings("KOWRA").has_value());
    }

    void deleteSetting_removesOnlyThatValue()
    {
        Settings test;
        test.settings.SaveSetting("KOWRA", "XTidePath", "x");
        test.settings.SaveSetting("KOWRA", "Other", "y");
        test.settings.SaveSetting("Else", "XTidePath", "z");
        test.settings.DeleteSetting("KOWRA", "XTidePath");
        QCOMPARE(test.All("KOWRA"), (Texts{"Other", "y"}));
        QCOMPARE(test.All("Else"), (Texts{"XTidePath", "z"}));
    }

    void deleteSetting_star_isTheUnnamedValue()
    {
        Settings test;
        test.settings.SaveSetting("KOWRA", "*", "unnamed");
        test.settings.SaveSetting("KOWRA", "XTidePath", "x");
        test.settings.DeleteSetting("KOWRA", "*");
        QCOMPARE(test.All("KOWRA"), (Texts{"XTidePath", "x"}));
    }

    void deleteSetting_withoutKey_removesThatSectionOnly()
    {
        Settings test;
        test.settings.SaveSetting("", "root", "kept");
        test.settings.SaveSetting("KOWRA", "XTidePath", "x");
        test.settings.SaveSetting("KOWRA", "Other", "y");
        test.settings.SaveSetting("Else", "XTidePath", "z");
        test.settings.DeleteSetting("KOWRA");
        QVERIFY(!test.settings.GetAllSettings("KOWRA"));
        QCOMPARE(test.All("Else"), (Texts{"XTidePath", "z"}));
        QCOMPARE(test.All(""), (Texts{"root", "kept"}));
    }

    void deleteSetting_emptySection_doesNothing()
    {
        Settings test;
        test.settings.SaveSetting("", "root", "kept");
        test.settings.SaveSetting("KOWRA", "XTidePath", "x");
        const std::string before = test.folder.Read("settings.xml");
        test.settings.DeleteSetting("");
        test.settings.DeleteSetting("", "root");
        QCOMPARE(test.folder.Read("settings.xml"), before);
    }

    void deleteSetting_missing_doesNothing()
    {
        Settings test;
        test.settings.DeleteSetting("KOWRA");
        test.settings.DeleteSetting("KOWRA", "XTidePath");
        QCOMPARE(test.folder.Names(), Texts());
        test.settings.SaveSetting("KOWRA", "XTidePath", "x");
        const std::string before = test.folder.Read("settings.xml");
        test.settings.DeleteSetting("Else");
        test.settings.DeleteSetting("KOWRA", "Other");
        QCOMPARE(test.folder.Read("settings.xml"), before);
    }

    void company_isTrimmedAndFallsBackToTheDefault()
    {
        Settings test;
        QCOMPARE(test.settings.Company(), std::string(CRegSettings::defaultCompany));
        QVERIFY(!test.settings.Company().empty());
        test.settings.Company("  Reef & Sons ");
        QCOMPARE(test.settings.Company(), "Reef & Sons"s);
        test.settings.Company("  ");
        QCOMPARE(test.settings.Company(), std::string(CRegSettings::defaultCompany));
    }

    void appName_isTrimmedAndFallsBackToTheProductName()
    {
        Settings test;
        QCOMPARE(test.settings.AppName(), std::string(CRegSettings::productName));
        QVERIFY(!test.settings.AppName().empty());
        test.settings.AppName(" Log ");
        QCOMPARE(test.settings.AppName(), "Log"s);
        test.settings.AppName("");
        QCOMPARE(test.settings.AppName(), std::string(CRegSettings::productName));
    }

    void companyAndAppName_doNotAffectWhereSettingsAreStored()
    {
        Settings test;
        test.settings.SaveSetting("KOWRA", "XTidePath", "x");
        test.settings.Company("Other");
        test.settings.AppName("Other");
        QCOMPARE(test.settings.GetSetting("KOWRA", "XTidePath", "none"), "x"s);
    }

    void error_isReportedAndNotRethrown()
    {
        BrokenStore store;
        CRegSettings settings(store);
        ExpectedReports reports;
        reports.Expect("CRegSettings", "GetSetting", ErrorNumber::OutOfMemory);
        QCOMPARE(settings.GetSetting("KOWRA", "XTidePath", "default"), "default"s);
        reports.Expect("CRegSettings", "SaveSetting", ErrorNumber::OutOfMemory);
        settings.SaveSetting("KOWRA", "XTidePath", "x");
        reports.Expect("CRegSettings", "GetAllSettings", ErrorNumber::OutOfMemory);
        QVERIFY(!settings.GetAllSettings("KOWRA"));
        reports.Expect("CRegSettings", "DeleteSetting", ErrorNumber::OutOfMemory);
        settings.DeleteSetting("KOWRA");
        reports.Expect("CRegSettings", "DeleteSetting", ErrorNumber::OutOfMemory);
        settings.DeleteSetting("KOWRA", "XTidePath");
    }
};

TEST_CLASS(tst_CRegSettings)
#include "tst_CRegSettings.moc"
