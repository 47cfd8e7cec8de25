#include "fileops/forms/frm_file_date_times.h"

#include <QAbstractTableModel>
#include <QCalendarWidget>
#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScopedValueRollback>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>
#include <array>
#include <utility>

#include "core/mod_date_time.h"
#include "platform/forms/busy_pointer.h"
#include "platform/forms/named_control.h"
#include "platform/forms/qt_text.h"
#include "platform/forms/window_size.h"

namespace vantrel {

class StampListModel : public QAbstractTableModel {
  public:
    StampListModel(const std::vector<FileToStamp>& files, const LocaleFormats& locale, QObject* parent)
        : QAbstractTableModel(parent), files_(files), locale_(locale) {}

    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(files_.size());
    }
    int columnCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(kCaptions.size());
    }
    QVariant data(const QModelIndex& index, int role) const override {
        if (role != Qt::DisplayRole && role != Qt::AccessibleTextRole && role != Qt::ToolTipRole) return {};
        const FileToStamp& file = files_[static_cast<std::size_t>(index.row())];
        if (index.column() == 0) return DisplayQString(file.name);
        if (!file.lastWrite) return QStringLiteral("?");
        return ToQString(index.column() == 1 ? locale_.Date(*file.lastWrite) : ClockText(*file.lastWrite));
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
        return QLatin1String(kCaptions[static_cast<std::size_t>(section)]);
    }
    void RowChanged(std::size_t row) {
        Q_EMIT dataChanged(index(static_cast<int>(row), 0), index(static_cast<int>(row), 2));
    }

  private:
    static constexpr std::array kCaptions{"Name", "Date", "Time"};
    const std::vector<FileToStamp>& files_;
    const LocaleFormats& locale_;
};

frmFileDateTimes::frmFileDateTimes(const Toolbox& tools, std::vector<FileToStamp> files, bool confirm,
                                   std::function<void()> showHelp, QWidget* parent)
    : QDialog(parent),
      MonthView1(new QCalendarWidget),
      txtHour(MakeNamed<QLineEdit>("", "txtHour")),
      txtMinute(MakeNamed<QLineEdit>("", "txtMinute")),
      txtSecond(MakeNamed<QLineEdit>("", "txtSecond")),
      optAMPM{MakeNamed<QRadioButton>("AM", "optAM"), MakeNamed<QRadioButton>("PM", "optPM")},
      lvwFiles(new QTableView),
      cmdOK(MakeNamed<QPushButton>("OK", "cmdOK")),
      cmdApply(MakeNamed<QPushButton>("&Apply", "cmdApply")),
      cmdClose(MakeNamed<QPushButton>("&Close", "cmdClose")),
      cmdHelp(MakeNamed<QPushButton>("&Help", "cmdHelp")),
      tools_(tools),
      files_(std::move(files)),
      confirm_(confirm),
      model_(new StampListModel(files_, tools.locale, this)) {
    setObjectName(QStringLiteral("frmFileDateTimes"));
    setWindowTitle(QStringLiteral("Set Multiple File Date/Times"));
    MonthView1->setObjectName(QStringLiteral("MonthView1"));
    lvwFiles->setObjectName(QStringLiteral("lvwFiles"));
    LayOut();
    Connect(std::move(showHelp));
    tools_.reporter.GuardRun("frmFileDateTimes.SetCalendarToToday", [this] { ShowClock(); });
}

void frmFileDateTimes::LayOutList() {
    lvwFiles->setAccessibleName(QStringLiteral("Files"));
    lvwFiles->setModel(model_);
    lvwFiles->setSelectionBehavior(QAbstractItemView::SelectRows);
    lvwFiles->setSelectionMode(QAbstractItemView::SingleSelection);
    lvwFiles->setTabKeyNavigation(false);
    lvwFiles->setShowGrid(false);
    lvwFiles->setWordWrap(false);
    lvwFiles->setTextElideMode(Qt::ElideMiddle);
    lvwFiles->verticalHeader()->hide();
    lvwFiles->verticalHeader()->setDefaultSectionSize(fontMetrics().lineSpacing() + 4);
    QHeaderView* header = lvwFiles->horizontalHeader();
    header->setHighlightSections(false);
    header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    header->setSectionResizeMode(0, QHeaderView::Stretch);
    for (const int column : {1, 2}) header->resizeSection(column, fontMetrics().averageCharWidth() * 18);
    if (!files_.empty()) lvwFiles->setCurrentIndex(model_->index(0, 0));
}

void frmFileDateTimes::LayOut() {
    LayOutList();
    auto* frame = new QGroupBox(QStringLiteral("New Date/Time"));
    auto* time = new QGridLayout;
    const std::pair<const char*, QLineEdit*> fields[]{
        {"Hour:", txtHour}, {"Minute:", txtMinute}, {"Second:", txtSecond}};
    int row = 0;
    for (const auto& [caption, field] : fields) {
        auto* label = new QLabel(QLatin1String(caption));
        label->setBuddy(field);
        field->setMaximumWidth(fontMetrics().averageCharWidth() * 10);
        field->installEventFilter(this);
        time->addWidget(label, row, 0);
        time->addWidget(field, row++, 1);
    }
    for (QRadioButton* option : optAMPM) time->addWidget(option, row++, 1);
    time->setRowStretch(row, 1);
    auto* inFrame = new QHBoxLayout(frame);
    inFrame->addWidget(MonthView1, 1);
    inFrame->addLayout(time);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    for (QPushButton* button : {cmdOK, cmdApply, cmdClose, cmdHelp}) {
        button->setAutoDefault(false);
        buttons->addWidget(button);
    }
    cmdOK->setDefault(true);
    auto* column = new QVBoxLayout(this);
    column->addWidget(frame);
    column->addWidget(lvwFiles, 1);
    column->addLayout(buttons);
    ResizeWithinScreen(*this, {600, 560});
    txtHour->setFocus();
}

void frmFileDateTimes::Connect(std::function<void()> showHelp) {
    connect(cmdOK, &QPushButton::clicked, this, [this] {
        tools_.reporter.GuardRun("frmFileDateTimes.ApplyNewDateTime", [this] {
            if (ApplyNewDateTime()) accept();
        });
    });
    connect(cmdApply, &QPushButton::clicked, this, [this] {
        tools_.reporter.GuardRun("frmFileDateTimes.ApplyNewDateTime", [this] { ApplyNewDateTime(); });
    });
    connect(cmdClose, &QPushButton::clicked, this, &QDialog::reject);
    connect(cmdHelp, &QPushButton::clicked, this, [this, showHelp = std::move(showHelp)] {
        if (showHelp) tools_.reporter.GuardRun("frmFileDateTimes.cmdHelp_Click", showHelp);
    });
}

bool frmFileDateTimes::ShowForm() {
    exec();
    return stamped_;
}

void frmFileDateTimes::ShowClock() {
    const CalendarTime now = ToCalendar(FileTimeToLocalFileTime(tools_.clock.Now()));
    MonthView1->setSelectedDate(QDate(now.year, now.month, now.day));
    const TwelveHourTime time = ToTwelveHours(now);
    optAMPM[time.pm ? 1 : 0]->setChecked(true);
    txtHour->setText(QString::number(time.hour));
    txtMinute->setText(QString::number(time.minute));
    txtSecond->setText(QString::number(time.second));
}

bool frmFileDateTimes::eventFilter(QObject* watched, QEvent* event) {
    // Behind whatever the click does that gave it the focus.
    if (event->type() == QEvent::FocusIn)
        QTimer::singleShot(0, watched, [watched] { static_cast<QLineEdit*>(watched)->selectAll(); });
    return QDialog::eventFilter(watched, event);
}

bool frmFileDateTimes::ValidateFields() {
    struct Field {
        QLineEdit* field;
        const char* name;
        int least, most;
    };
    for (const Field& entry : {Field{txtHour, "Hour", 1, 12}, Field{txtMinute, "Minute", 0, 59},
                               Field{txtSecond, "Second", 0, 59}}) {
        if (entry.field->text().isEmpty()) entry.field->setText(QStringLiteral("0"));
        if (TimeField(FromQString(entry.field->text()), entry.least, entry.most)) continue;
        tools_.messages.Ask({.title = "Set File Date/Time",
                             .text = std::string("Invalid ") + entry.name + " Value",
                             .icon = MessageIcon::Information,
                             .defaultAnswer = {}});
        entry.field->setFocus();
        entry.field->selectAll();
        return false;
    }
    return true;
}

FileTime frmFileDateTimes::NewTime() const {
    const auto value = [](const QLineEdit* field) {
        return TimeField(FromQString(field->text()), 0, 59).value_or(0);
    };
    const QDate date = MonthView1->selectedDate();
    CalendarTime time;
    time.year = date.year(), time.month = date.month(), time.day = date.day();
    time.hour = HourOfDay(value(txtHour), optAMPM[1]->isChecked());
    time.minute = value(txtMinute), time.second = value(txtSecond);
    return FromCalendar(time);
}

bool frmFileDateTimes::ApplyNewDateTime() {
    if (!ValidateFields()) return false;
    const FileTime time = NewTime();
    if (confirm_ &&
        tools_.messages.Ask({.title = "Confirm Date/Time Change",
                             .text = "The Dates/Time of these files is about to be changed to:\r\n\r\n" +
                                     tools_.locale.Date(time) + " " + ClockText(time) +
                                     "\r\n\r\nDo you wish to continue?",
                             .icon = MessageIcon::Question,
                             .buttons = MessageButtons::YesNo,
                             .defaultAnswer = {}}) != MessageAnswer::Yes)
        return false;
    Stamp(time);
    return true;
}

// The first file that cannot be changed is shown with its reason, the others are counted.
void frmFileDateTimes::Stamp(FileTime local) {
    std::size_t failed = 0;
    summary_ = {};
    {
        const QScopedValueRollback<bool> running(running_, true);
        const BusyPointer pointer;
        for (auto* child : findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly))
            child->setEnabled(false);
        for (std::size_t i = 0; i < files_.size(); ++i) {
            FileToStamp& file = files_[i];
            tools_.loop.Yield();
            const Error error = SetLastWriteTime(tools_, file.path, local, file.seen);
            if (!error.IsOk()) {
                if (++failed == 1) ReportLastWriteTime(tools_, error);
                summary_.AddNotDone(file.path, error);
                continue;
            }
            stamped_ = true;
            ++summary_.stamped;
            file.lastWrite = local;
            model_->RowChanged(i);
        }
        for (auto* child : findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly))
            child->setEnabled(true);
    }
    if (failed > 1)
        tools_.messages.Ask({.title = "Set File Date/Time",
                             .text = "The date/time of " + std::to_string(failed) + " of " +
                                     std::to_string(files_.size()) + " files could not be changed.",
                             .icon = MessageIcon::Warning,
                             .defaultAnswer = {}});
}

void frmFileDateTimes::done(int result) {
    if (!running_) QDialog::done(result);
}

}  // namespace vantrel
