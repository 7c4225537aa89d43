#include "fTarno.h"

#include "LogColumns.h"
#include "core/Conversions.h"
#include "core/ErrorLog.h"
#include "core/Paths.h"
#include "fSplash.h"
#include "qt/Icons.h"
#include "qt/Strings.h"
#include "ui/entry/fEntry.h"
#include "ui/locations/fLocs.h"
#include "ui/reports/fRptLog.h"
#include "ui_fTarno.h"

#include <QAction>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QMenu>

#include <array>
#include <vector>

namespace
{

constexpr std::string_view module = "fTarno";
constexpr std::string_view tideSection = "KOWRA";
constexpr std::string_view tideSetting = "XTidePath";

struct Command {
    const char* button; ///< the toolbar's key
    const char* icon;
    int menuIndex; ///< in the pop-up menu
    const char* menuCaption;
    void (fTarno::*run)();
};

constexpr std::array commands{
    Command{"icoAdd", "add", 0, "Add", &fTarno::Add},
    Command{"icoEdit", "edit", 1, "Edit", &fTarno::Edit},
    Command{"icoDelete", "delete", 2, "Delete", &fTarno::Delete},
    Command{"Earth", "locations", 3, "Locations", &fTarno::Locations},
    Command{"icoReports", "reports", 4, "Reports", &fTarno::Reports},
    Command{"icoAbout", "about", 5, "About...", &fTarno::About},
    Command{"icoTides", "tides", 7, "Tides", &fTarno::Tides},
};

QString MenuItemName(int index)
{
    return QStringLiteral("miPopUp_") + QString::number(index);
}

} // namespace

fTarno::fTarno(const Program& program)
    : m_program(program), m_ui(std::make_unique<Ui::fTarno>()), m_popUp(new QMenu(this))
{
    m_ui->setupUi(this);
    m_ui->lvwEntry->SetHeadings(LogHeadings());
    m_ui->lvwEntry->FitColumns(LogSamples(), StretchedLogColumn());
    MakePopUp();
    ConnectCommands();
    Form_Load();
}

fTarno::~fTarno() = default;

void fTarno::MakePopUp()
{
    m_popUp->setObjectName(QStringLiteral("popPopup"));
    int index = 0;
    for (const Command& command : commands) {
        for (; index < command.menuIndex; ++index) {
            m_popUp->addSeparator();
        }
        QAction* item =
            m_popUp->addAction(DrawnIcon(QLatin1String(command.icon)), QLatin1String(command.menuCaption));
        item->setObjectName(MenuItemName(index++));
    }
}

void fTarno::ConnectCommands()
{
    for (const Command& command : commands) {
        auto* button = findChild<QAction*>(QLatin1String(command.button));
        button->setIcon(DrawnIcon(QLatin1String(command.icon)));
        connect(button, &QAction::triggered, this, command.run);
        connect(findChild<QAction*>(MenuItemName(command.menuIndex)), &QAction::triggered, this, command.run);
    }
    connect(m_ui->cmdExit, &QPushButton::clicked, this, &fTarno::cmdExit_Click);
    connect(m_ui->lvwEntry, &SortableList::OpenRequested, this, &fTarno::Edit);
    connect(m_ui->lvwEntry, &SortableList::Pressed, this,
            [this](Qt::MouseButton button, const QPoint& position) {
                Trap(module, "lvwEntry_MouseDown", [&] {
                    EnableCommands();
                    if (button == Qt::RightButton) {
                        m_popUp->popup(position);
                    }
                });
            });
}

void fTarno::Form_Load()
{
    Trap(module, "Form_Load", [this] {
        LoadEntryList();
        EnableCommands();
    });
}

/// "Add" needs a location; editing, deleting and reporting need an entry.
void fTarno::EnableCommands()
{
    RecordList locations;
    if (m_program.sql.LocationList(locations) != succeeded) {
        return;
    }
    m_ui->lvwEntry->SetHint(
        locations.empty()
            ? QStringLiteral(
                  "Your log is empty. A trip needs a place: click \"Locations\" and add one first.")
            : QStringLiteral("No trips yet. Click \"Add\", or press Ctrl+N, to log the first one."));
    const bool anyEntry = m_ui->lvwEntry->RowCount() > 0;
    for (const Command& command : commands) {
        const bool needsLocation = command.run == &fTarno::Add;
        const bool needsEntry =
            command.run == &fTarno::Edit || command.run == &fTarno::Delete || command.run == &fTarno::Reports;
        const bool enabled = (!needsLocation || !locations.empty()) && (!needsEntry || anyEntry);
        findChild<QAction*>(QLatin1String(command.button))->setEnabled(enabled);
        findChild<QAction*>(MenuItemName(command.menuIndex))->setEnabled(enabled);
    }
}

void fTarno::LoadEntryList()
{
    std::vector<TextTableModel::Row> rows;
    Trap(module, "LoadEntryList", [&] {
        RecordList entries;
        if (m_program.sql.EntryList(entries) == succeeded) {
            AddLogRows(rows, entries,
                       [this](const std::string& number) { return m_program.sql.LocationNameGet(number); });
        }
    });
    m_ui->lvwEntry->SetRows(std::move(rows));
}

void fTarno::SetControls(bool usable)
{
    Trap(module, "SetControls", [&] { m_ui->lvwEntry->SetUsable(usable); });
}

/// Runs `body`, which opens a window, while the list is greyed; afterwards the list is usable again and
/// the commands follow their rule, whatever happened.
template <typename Body>
void fTarno::WithListGreyed(const char* routine, Body&& body)
{
    SetControls(false);
    Trap(module, routine, std::forward<Body>(body));
    SetControls(true);
    EnableCommands();
    m_ui->lvwEntry->setFocus();
}

std::int16_t fTarno::SelectedEntry() const
{
    return ToInt16(ToUtf8(m_ui->lvwEntry->SelectedKey().value().mid(1)));
}

void fTarno::EditSelected(const char* routine, bool remove)
{
    if (!m_ui->lvwEntry->SelectedKey()) {
        return;
    }
    WithListGreyed(routine, [&] {
        fEntry(m_program, this).SetData(SelectedEntry(), remove);
        LoadEntryList();
    });
}

void fTarno::Add()
{
    WithListGreyed("Add", [this] {
        fEntry(m_program, this).SetData(0, false);
        LoadEntryList();
    });
}

void fTarno::Edit()
{
    EditSelected("Edit", false);
}

void fTarno::Delete()
{
    EditSelected("Edit", true); // its errors bear the name of its sister
}

void fTarno::Locations()
{
    WithListGreyed("Locations", [this] { fLocs(m_program, this).exec(); });
}

void fTarno::Reports()
{
    WithListGreyed("Reports", [this] { fRptLog(m_program, this).exec(); });
}

void fTarno::About()
{
    WithListGreyed("About", [this] { fSplash(FromUtf8(m_program.folder.GetAppPath()), this).ShowAbout(); });
}

void fTarno::Tides()
{
    Trap(module, "Tides", [this] {
        std::string path = m_program.settings.GetSetting(tideSection, tideSetting, "");
        if (path.empty() || !mMain::FileExist(path)) {
            QString filter = QStringLiteral("WXTide32 Progam File (WXTide32.exe)");
#ifndef Q_OS_WIN
            filter += QStringLiteral(";;All Files (*)");
#endif
            const auto chosen =
                m_program.files.Open(this, {.title = QStringLiteral("Specify WXTide32 Program Location"),
                                            .filter = filter,
                                            .folder = {},
                                            .fileName = QStringLiteral("WXTide32.exe")});
            if (!chosen) {
                return;
            }
            path = ToUtf8(*chosen);
            m_program.settings.SaveSetting(tideSection, tideSetting, path);
        }
        m_program.programs.Start(FromUtf8(path), {});
    });
}

void fTarno::cmdExit_Click()
{
    Trap(module, "cmdExit_Click", [this] {
        const Button answer =
            m_program.messages.Ask(this, {.text = QStringLiteral("Are you sure you want to exit Tarno?"),
                                          .title = QStringLiteral("Going Fishing Again?"),
                                          .icon = Icon::Question,
                                          .buttons = Buttons::YesNoCancel,
                                          .byDefault = Button::No});
        if (answer == Button::Yes && MayLoseUnsaved()) {
            m_exitConfirmed = true;
            m_program.sql.DeInit();
            Q_EMIT ExitConfirmed();
        }
    });
}

/// Whether nothing would be lost by ending now, or the user accepts it.
bool fTarno::MayLoseUnsaved()
{
    const std::vector<std::string> files = m_program.sql.UnsavedFiles();
    if (files.empty()) {
        return true;
    }
    QStringList names;
    for (const std::string& file : files) {
        names << FromUtf8(file);
    }
    const QString text = QStringLiteral("The last changes could not be saved to: ") +
                         names.join(QStringLiteral(", ")) +
                         QStringLiteral("\r\nThey are lost when Tarno ends now. Exit all the same?");
    return m_program.messages.Ask(this, {.text = text,
                                         .title = QStringLiteral("Changes Not Saved"),
                                         .icon = Icon::Exclamation,
                                         .buttons = Buttons::YesNo,
                                         .byDefault = Button::No}) == Button::Yes;
}

void fTarno::closeEvent(QCloseEvent* event)
{
    if (!m_exitConfirmed) {
        cmdExit_Click();
    }
    event->setAccepted(m_exitConfirmed);
}

void fTarno::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape) {
        cmdExit_Click();
    } else {
        QMainWindow::keyPressEvent(event);
    }
}
