#include "IncludeWalk.h"
#include "support/StdStrings.h"
#include "support/TemporaryFolder.h"
#include "support/TestClass.h"

using namespace Tarno;

using namespace std::string_literals;

namespace
{

using Texts = std::vector<std::string>;

/// A small tree without violations.
struct SampleTree {
    SampleTree()
    {
        for (const char* layer : {"app", "ui/main", "ui/locations", "ui/entry", "ui/reports", "ui/common",
                                  "reports", "reports/engine", "analysis", "store", "astro", "core"}) {
            folder.MakeFolder(layer);
        }
        folder.Write("core/Error.h", "#pragma once\n#include <string>\n");
        folder.Write("core/Error.cpp", "#include \"Error.h\"\n");
        folder.Write("store/cSQL.h", "#include \"core/Error.h\"\n#include <pugixml.hpp>\n");
        folder.Write("analysis/Query.h", "#include \"store/cSQL.h\"\n#include <QString>\n");
        folder.Write("ui/entry/fEntry.h", "#include \"store/cSQL.h\"\n#include <QDialog>\n");
        folder.Write("ui/entry/fEntry.cpp",
                     "#include \"fEntry.h\"\n#include \"ui_fEntry.h\"\n#include \"fEntry.moc\"\n");
        folder.Write("ui/locations/fLocs.h", "  #  include \"ui/entry/fEntry.h\" // the picture panel\n");
        folder.Write("ui/main/fTarno.ui", "<widget/>\n  <header>ui/locations/fLocs.h</header>\n");
        folder.Write("reports/engine/Report.h",
                     "#include \"core/Error.h\"\n#include <QPainter>\n#include <vector>\n");
        folder.Write("ui/reports/dlgPreview.h",
                     "#include \"reports/engine/Report.h\"\n#include <QPrinter>\n");
    }

    Texts Violations() const { return WalkIncludes(folder.Path()).violations; }

    TemporaryFolder folder;
};

} // namespace

class tst_LayerOrder : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void sources_includeOnlyLayersBelow()
    {
        const IncludeWalk walk = WalkIncludes(TARNO_SOURCES);
        for (const char* file :
             {"core/Error.h", "store/cSQL.cpp", "astro/Forecast.h", "ui/entry/fEntry.ui"}) {
            QVERIFY2(std::find(walk.files.begin(), walk.files.end(), file) != walk.files.end(), file);
        }
        QCOMPARE(walk.violations, Texts());
    }

    void goodTree_hasNoViolation()
    {
        const SampleTree tree;
        QCOMPARE(tree.Violations(), Texts());
        QCOMPARE(static_cast<int>(WalkIncludes(tree.folder.Path()).files.size()), 10);
    }

    void badInclude_isFound_data()
    {
        QTest::addColumn<std::string>("file");
        QTest::addColumn<std::string>("line");
        QTest::addColumn<std::string>("fault");
        const auto row = [](const char* name, const char* file, const char* line, const char* fault) {
            QTest::newRow(name) << std::string(file) << std::string(line) << std::string(fault);
        };
        row("upwards", "core/Text.h", "#include \"store/cSQL.h\"", "store/cSQL.h is on a higher level");
        row("upwards within ui", "ui/entry/Page.h", "#include \"ui/locations/fLocs.h\"",
            "ui/locations/fLocs.h is on a higher level");
        row("upwards from the engine", "reports/engine/Page.h", "#include \"ui/reports/dlgPreview.h\"",
            "ui/reports/dlgPreview.h is on a higher level");
        row("upwards with blanks", "store/Record.cpp", "\t # include  \"ui/entry/fEntry.h\" // why",
            "ui/entry/fEntry.h is on a higher level");
        row("upwards from a form", "ui/entry/Page.ui", "   <header>ui/locations/fLocs.h</header>",
            "ui/locations/fLocs.h is on a higher level");
        row("other layer without path", "store/Record.h", "#include \"Error.h\"",
            "Error.h is not written with its full path");
        row("other layer by relative path", "store/Record.h", "#include \"../core/Error.h\"",
            "../core/Error.h is not written with its full path");
        row("other layer by partial path", "ui/main/fTarno.h", "#include \"entry/fEntry.h\"",
            "entry/fEntry.h is not written with its full path");
        row("missing file", "store/Record.h", "#include \"core/Missing.h\"",
            "core/Missing.h is not written with its full path");
        row("own header in brackets", "store/Record.h", "#include <core/Error.h>",
            "core/Error.h is not an external header");
        row("Qt in the core", "core/Text.h", "#include <QString>", "QString is Qt");
        row("Qt with its module", "astro/Forecast.h", "#include <QtCore/QString>", "QtCore/QString is Qt");
        row("Qt in lower case", "store/Record.h", "#include <qstring.h>", "qstring.h is Qt");
        row("widget in the engine", "reports/engine/Page.h", "#include <QWidget>",
            "QWidget is not known to be in Qt Core or Qt Gui");
        row("printer in the engine", "reports/engine/Page.h", "#include <QtPrintSupport/QPrinter>",
            "QtPrintSupport/QPrinter is not known to be in Qt Core or Qt Gui");
        row("widget in a report", "reports/arLogList.h", "#include <QDialog>",
            "QDialog is not known to be in Qt Core or Qt Gui");
        row("upwards from the queries", "analysis/Query.cpp", "#include \"reports/engine/Report.h\"",
            "reports/engine/Report.h is on a higher level");
        row("Qt Gui in the queries", "analysis/Query.cpp", "#include <QColor>",
            "QColor is not known to be in Qt Core");
        row("sideways", "astro/Day.h", "#include \"store/cSQL.h\"", "store/cSQL.h is on the same level");
        row("sideways within ui", "ui/entry/Page.h", "#include \"ui/reports/dlgPreview.h\"",
            "ui/reports/dlgPreview.h is on the same level");
    }

    void badInclude_isFound()
    {
        QFETCH(std::string, file);
        QFETCH(std::string, line);
        QFETCH(std::string, fault);
        const SampleTree tree;
        tree.folder.Write(file, "#include <string>\n" + line + "\n");
        QCOMPARE(tree.Violations(), Texts{file + ": " + fault});
    }

    void fileInNoLayer_isFound()
    {
        const SampleTree tree;
        tree.folder.MakeFolder("helpers");
        tree.folder.Write("helpers/Misc.h", "");
        tree.folder.Write("main.cpp", "");
        QCOMPARE(tree.Violations(),
                 (Texts{"helpers/Misc.h: not part of any layer", "main.cpp: not part of any layer"}));
    }

    void topFolders_dependOneWay()
    {
        // all folders of a top folder precede those of the next one
        Texts topFolders;
        for (const std::string& layer : Layers()) {
            const std::string top = layer.substr(0, layer.find('/'));
            if (topFolders.empty() || topFolders.back() != top) {
                topFolders.push_back(top);
            }
        }
        QCOMPARE(topFolders, (Texts{"app", "ui", "reports", "backup", "exchange", "analysis", "qt", "store",
                                    "astro", "core"}));
    }
};

TEST_CLASS(tst_LayerOrder)
#include "tst_LayerOrder.moc"
