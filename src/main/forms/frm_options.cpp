#include "main/forms/frm_options.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QScrollArea>
#include <QShortcut>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>

#include "main/forms/options/option_pages.h"
#include "platform/forms/access_keys.h"
#include "platform/forms/qt_text.h"
#include "platform/forms/window_size.h"
#include "settings/option_changes.h"

namespace vantrel {
namespace {

QPushButton* Button(const QString& caption, const char* name, QWidget* parent) {
    auto* button = new QPushButton(caption, parent);
    button->setObjectName(QLatin1String(name));
    button->setAutoDefault(false);
    return button;
}

}  // namespace

frmOptions::frmOptions(Parts parts, const Options& options, QWidget* parent)
    : QDialog(parent),
      tbsOptions(new QTabWidget(this)),
      cmdRestoreTab(Button(QStringLiteral("Restore &Defaults of This Tab"), "cmdRestoreTab", this)),
      cmdHelp(Button(QStringLiteral("&Help"), "cmdHelp", this)),
      cmdOK(Button(QStringLiteral("OK"), "cmdOK", this)),
      cmdCancel(Button(QStringLiteral("Cancel"), "cmdCancel", this)),
      parts_(std::move(parts)),
      edited_(options) {
    setObjectName(QStringLiteral("frmOptions"));
    setWindowTitle(QStringLiteral("Options"));
    tbsOptions->setObjectName(QStringLiteral("tbsOptions"));
    tbsOptions->setAccessibleName(QStringLiteral("Kinds of options"));
    MakePages();
    LayOut();
    Wire();
    for (OptionPage* page : pages_) page->ShowOptions();
    ShowDefaultButton();
}

frmOptions::~frmOptions() = default;

void frmOptions::MakePages() {
    const OptionsContext context{parts_.tools, parts_.environment, parts_.sounds, edited_};
    compare_ = new ComparePage(context);
    filters_ = new FilterPage(context);
    pages_ = {CheckBoxPage::General(context),
              compare_,
              filters_,
              new SyncPage(context),
              new SoundsPage(context),
              new AppearancePage(context),
              CheckBoxPage::ViewFileDiffs(context),
              new DupesPage(context),
              new ExtrasPage(context)};
    const QSet<QChar> taken = AccessKeysOf(*this);  // of the buttons that every tab has
    for (const OptionTabInfo& info : OptionTabs()) {
        OptionPage& page = Page(info.tab);
        GiveAccessKeys(page, taken);
        // A small screen has no room for all of a tab.
        auto* scroll = new QScrollArea;
        scroll->setWidgetResizable(true);
        scroll->setFrameShape(QFrame::NoFrame);
        scroll->setFocusPolicy(Qt::NoFocus);
        scroll->setWidget(&page);
        scroll->viewport()->setAutoFillBackground(false);
        page.setAutoFillBackground(false);
        tbsOptions->addTab(scroll, ToQString(info.caption));
    }
}

void frmOptions::LayOut() {
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(cmdRestoreTab);
    buttons->addWidget(cmdHelp);
    buttons->addStretch(1);
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);
    auto* column = new QVBoxLayout(this);
    column->addWidget(tbsOptions, 1);
    column->addLayout(buttons);
    QWidget* before = tbsOptions;
    for (QPushButton* button : {cmdOK, cmdCancel, cmdRestoreTab, cmdHelp}) {
        setTabOrder(before, button);
        before = button;
    }
    QSize wanted(tbsOptions->tabBar()->sizeHint().width(), 0);
    for (const OptionPage* page : pages_) wanted = wanted.expandedTo(page->sizeHint());
    const int line = fontMetrics().lineSpacing();  // for the frames around the tab
    ResizeWithinScreen(*this, wanted + QSize(line * 2, line * 4 + tbsOptions->tabBar()->sizeHint().height() +
                                                           cmdOK->sizeHint().height()));
    cmdRestoreTab->setToolTip(
        QStringLiteral("Gives all options of this tab what a fresh program has; OK makes it hold."));
}

void frmOptions::Wire() {
    const auto on = [this](QPushButton* button, const char* routine, void (frmOptions::*click)()) {
        connect(button, &QPushButton::clicked, this, [this, routine, click] {
            parts_.tools.reporter.GuardRun(routine, [&] { (this->*click)(); });
        });
    };
    on(cmdRestoreTab, "frmOptions.cmdRestoreTab_Click", &frmOptions::cmdRestoreTab_Click);
    on(cmdHelp, "frmOptions.cmdHelp_Click", &frmOptions::cmdHelp_Click);
    on(cmdOK, "frmOptions.cmdOK_Click", &frmOptions::cmdOK_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    const auto* help = new QShortcut(QKeySequence(Qt::Key_F1), this);
    connect(help, &QShortcut::activated, this,
            [this] { parts_.tools.reporter.GuardRun("frmOptions.cmdHelp_Click", [&] { cmdHelp_Click(); }); });
    connect(compare_, &ComparePage::Wrong, this, [this] { SelectTab(OptionTab::Compare); });
    connect(filters_, &FilterPage::TypingChanged, this, &frmOptions::ShowDefaultButton);
    connect(tbsOptions, &QTabWidget::currentChanged, this, &frmOptions::ShowDefaultButton);
}

// While a file type is typed Enter adds it.
void frmOptions::ShowDefaultButton() {
    QPushButton* add = filters_->AddButtonInUse();
    (add != nullptr ? add : cmdOK)->setDefault(true);
}

void frmOptions::ShowTab(OptionTab tab) {
    SelectTab(tab);
    Page(tab).FirstControl()->setFocus();
    exec();
}

void frmOptions::SelectTab(OptionTab tab) {
    tbsOptions->setCurrentIndex(static_cast<int>(tab) - 1);
}

OptionTab frmOptions::CurrentTab() const {
    return static_cast<OptionTab>(tbsOptions->currentIndex() + 1);
}

void frmOptions::cmdRestoreTab_Click() {
    for (const OptionBox& box : OptionBoxes()) {
        if (box.tab != CurrentTab()) continue;
        const OptionLine& line = OptionOf(box.key);
        TakeOptionText(line, DefaultText(line, parts_.environment, edited_), parts_.environment, edited_);
    }
    Page(CurrentTab()).ShowOptions();
}

void frmOptions::cmdHelp_Click() {
    QString place;
    for (const QWidget* at = focusWidget(); at != nullptr && place.isEmpty(); at = at->parentWidget())
        place = at->property(kHelpProperty).toString();
    if (place.isEmpty()) place = Page(CurrentTab()).property(kHelpProperty).toString();
    parts_.showHelp(FromQString(place), this);
}

void frmOptions::cmdOK_Click() {
    for (OptionPage* page : pages_)
        if (!page->Check()) return;
    // They hold also where an error comes out of it, as from a settings file that cannot be written.
    accept();
    parts_.take(edited_);
}

}  // namespace vantrel
