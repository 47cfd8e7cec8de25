#include <QButtonGroup>
#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <algorithm>

#include "main/forms/options/option_pages.h"
#include "platform/forms/qt_text.h"
#include "settings/filter_list.h"
#include "settings/ini_document.h"

namespace vantrel {
namespace {

constexpr const char* kEverything = "*";

std::string Trimmed(const std::string& text) {
    return FromQString(ToQString(text).trimmed());
}

// What a start of the program reads back of a text is less than the text.
bool IsCutByFile(const std::string& text) {
    return ProfileText(text, {}) != text;
}

}  // namespace

FilterPage::FilterPage(const OptionsContext& context)
    : OptionPage(OptionTab::IncludeExclude, context),
      lstIncludeFilters(new QListWidget),
      lstExcludeFilters(new QListWidget),
      txtFilter(new QLineEdit),
      cmdAdd(NewButton("cmdAdd", QStringLiteral("&Add"))),
      lblTooLong(
          NewLabel("lblTooLong", QStringLiteral("This list is longer than the 255 characters that are "
                                                "kept for the next start. Save it as a filter list."))) {
    QPushButton* cmdDelete = NewButton("cmdDelete", QStringLiteral("&Remove"));
    QPushButton* cmdLoadList = NewButton("cmdLoadList", QStringLiteral("&Load List..."));
    QPushButton* cmdSaveList = NewButton("cmdSaveList", QStringLiteral("&Save List..."));
    QPushButton* cmdNewList = NewButton("cmdNewList", QStringLiteral("&New List"));
    cmdAdd->setToolTip(QStringLiteral("Adds what is typed to the list; commas stand between several types."));
    cmdDelete->setToolTip(QStringLiteral("Removes the selected types from the list."));
    cmdLoadList->setToolTip(QStringLiteral("Takes both lists from a file."));
    cmdSaveList->setToolTip(QStringLiteral("Writes both lists to a file."));
    cmdNewList->setToolTip(QStringLiteral("Empties both lists."));

    auto* types = new QHBoxLayout;
    auto* group = new QButtonGroup(this);
    for (const char* caption : {"File Types to &Include ", "File Types to &Exclude"}) {
        auto* button = new QRadioButton(QString::fromLatin1(caption));
        button->setObjectName(QStringLiteral("optFilterType(%1)").arg(optFilterType.size()));
        Describe(*button, BoxOf(optFilterType.empty() ? "IncludeFileTypes" : "ExcludeFileTypes"));
        group->addButton(button);
        types->addWidget(button);
        connect(button, &QRadioButton::toggled, this, &FilterPage::ShowList);
        optFilterType.push_back(button);
    }
    types->addStretch(1);

    txtFilter->setObjectName(QStringLiteral("txtFilter"));
    txtFilter->setAccessibleName(QStringLiteral("File type to add"));
    txtFilter->setPlaceholderText(QStringLiteral("File type to add, as in *.txt"));
    txtFilter->setToolTip(
        QStringLiteral("* stands for any characters, ? for one; a pattern with \\ in front is for folders."));
    auto* grid = new QGridLayout;
    grid->addLayout(types, 0, 0, 1, 2);
    grid->addWidget(txtFilter, 1, 0);
    grid->addWidget(cmdAdd, 1, 1);
    int place = 0;
    for (QListWidget* list : {lstIncludeFilters, lstExcludeFilters}) {
        list->setSelectionMode(QAbstractItemView::ExtendedSelection);
        const OptionBox& box = BoxOf(place++ == 0 ? "IncludeFileTypes" : "ExcludeFileTypes");
        list->setAccessibleName(ToQString(box.caption));
        Describe(*list, box);
        list->installEventFilter(this);
        grid->addWidget(list, 2, 0, 5, 1);
    }
    grid->addWidget(cmdDelete, 2, 1);
    grid->addWidget(cmdLoadList, 3, 1);
    grid->addWidget(cmdSaveList, 4, 1);
    grid->addWidget(cmdNewList, 5, 1);
    grid->setRowStretch(6, 1);
    grid->setColumnStretch(0, 1);
    Column().addLayout(grid, 1);
    Column().addWidget(lblTooLong);

    auto* boxes = new QGridLayout;
    int cell = 0;
    for (const char* key :
         {"ExcludeSystemFiles", "ExcludeHiddenFiles", "ExcludeSystemFolders", "ExcludeHiddenFolders"}) {
        auto* holder = new QVBoxLayout;
        AddCheck(*holder, key);
        boxes->addLayout(holder, cell % 2, cell / 2);
        ++cell;
    }
    Column().addLayout(boxes);

    connect(cmdAdd, &QPushButton::clicked, this, Guarded("cmdAdd_Click", [this] { cmdAdd_Click(); }));
    connect(cmdDelete, &QPushButton::clicked, this,
            Guarded("cmdDelete_Click", [this] { cmdDelete_Click(); }));
    connect(cmdLoadList, &QPushButton::clicked, this,
            Guarded("cmdLoadList", [this] { cmdLoadList_Click(); }));
    connect(cmdSaveList, &QPushButton::clicked, this, Guarded("cmdSaveList", [this] { SaveList(); }));
    connect(cmdNewList, &QPushButton::clicked, this,
            Guarded("cmdNewList_Click", [this] { cmdNewList_Click(); }));
    connect(txtFilter, &QLineEdit::textChanged, this, &FilterPage::TypingChanged);
    optFilterType[0]->setChecked(true);
    OnShow([this] {
        std::vector<std::string> include = FillFilterTypeList(Edited().includeFileTypes);
        if (include.empty()) include.emplace_back(kEverything);
        Fill(*lstIncludeFilters, include);
        Fill(*lstExcludeFilters, FillFilterTypeList(Edited().excludeFileTypes));
        ShowLengths();
    });
}

QWidget* FilterPage::FirstControl() {
    return txtFilter;
}

QPushButton* FilterPage::AddButtonInUse() const {
    return isVisible() && !txtFilter->text().trimmed().isEmpty() ? cmdAdd : nullptr;
}

bool FilterPage::eventFilter(QObject* watched, QEvent* event) {
    const bool isList = watched == lstIncludeFilters || watched == lstExcludeFilters;
    if (isList && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Delete) {
        Guarded("cmdDelete_Click", [this] { cmdDelete_Click(); })();
        return true;
    }
    return OptionPage::eventFilter(watched, event);
}

bool FilterPage::ShowsInclude() const {
    return optFilterType[0]->isChecked();
}

void FilterPage::ShowList() {
    lstIncludeFilters->setVisible(ShowsInclude());
    lstExcludeFilters->setVisible(!ShowsInclude());
    ShowLengths();
}

void FilterPage::ShowLengths() {
    lblTooLong->setVisible(
        IsCutByFile(ShowsInclude() ? Edited().includeFileTypes : Edited().excludeFileTypes));
}

// The item shows what is safe to show, and holds the pattern itself.
void FilterPage::Fill(QListWidget& list, const std::vector<std::string>& patterns) {
    list.clear();
    for (const std::string& pattern : patterns) {
        auto* item = new QListWidgetItem(DisplayQString(pattern), &list);
        item->setData(Qt::UserRole, ToQString(pattern));
    }
}

std::vector<std::string> FilterPage::PatternsOf(const QListWidget& list) {
    std::vector<std::string> patterns;
    patterns.reserve(static_cast<std::size_t>(list.count()));
    for (int row = 0; row < list.count(); ++row)
        patterns.push_back(FromQString(list.item(row)->data(Qt::UserRole).toString()));
    return patterns;
}

void FilterPage::Store() {
    std::vector<std::string> include = PatternsOf(*lstIncludeFilters);
    // What stands there for an empty list is no pattern of the user's.
    if (include == std::vector<std::string>{kEverything}) include.clear();
    Edited().includeFileTypes = CreateStringFromList(include);
    Edited().excludeFileTypes = CreateStringFromList(PatternsOf(*lstExcludeFilters));
    ShowLengths();
}

void FilterPage::cmdAdd_Click() {
    QListWidget& list = ListInView();
    std::vector<std::string> patterns = PatternsOf(list);
    bool isEmpty = true;
    for (const std::string& piece : FillFilterTypeList(FromQString(txtFilter->text()))) {
        const std::string pattern = Trimmed(piece);
        if (pattern.empty()) continue;
        isEmpty = false;
        if (std::find(patterns.begin(), patterns.end(), pattern) == patterns.end())
            patterns.push_back(pattern);
    }
    if (isEmpty) {
        Tell("Add File Type", "Please enter a file type before pressing the Add button.");
        txtFilter->setFocus();
        return;
    }
    // Beside other types the one for all would make them meaningless.
    if (ShowsInclude() && Edited().includeFileTypes.empty() && patterns.size() > 1 &&
        patterns.front() == kEverything)
        patterns.erase(patterns.begin());
    Fill(list, patterns);
    Store();
    list.setCurrentRow(list.count() - 1);
    txtFilter->clear();
    txtFilter->setFocus();
}

void FilterPage::cmdDelete_Click() {
    QListWidget& list = ListInView();
    const QList<QListWidgetItem*> chosen = list.selectedItems();
    if (chosen.isEmpty())
        return Tell("Delete File Type",
                    "Please select a file type from the list before pressing the Remove button.");
    qDeleteAll(chosen);
    Store();
}

void FilterPage::cmdLoadList_Click() {
    const auto path = Context().tools.messages.AskForFile(
        {.title = "Load a Filter List", .filter = std::string(kFilterListFiles), .startFolder = {}});
    if (!path) return;
    FilterList loaded;
    const Error error = ReadFilterList(Context().tools.files, *path, loaded);
    if (error.Number() == ErrorNumber::InvalidPropertyValue)
        return Tell("Load a Filter List", "\"" + *path + "\" is no filter list: " + error.Description() +
                                              ".\r\n\r\nThe filters have not been changed.");
    ThrowIfFailed(error);
    Fill(*lstIncludeFilters, loaded.include);
    Fill(*lstExcludeFilters, loaded.exclude);
    Store();
}

bool FilterPage::SaveList() {
    FileDialog dialog;
    dialog.title = "Save Filter List As...";
    dialog.filter = kFilterListFiles;
    dialog.save = true;
    const auto path = Context().tools.messages.AskForFile(dialog);
    if (!path) return false;
    ThrowIfFailed(WriteFilterList(Context().tools.files, *path,
                                  {PatternsOf(*lstIncludeFilters), PatternsOf(*lstExcludeFilters)}));
    return true;
}

void FilterPage::cmdNewList_Click() {
    if (lstIncludeFilters->count() == 0 && lstExcludeFilters->count() == 0) return;
    const MessageAnswer answer = Context().tools.messages.Ask({.title = "Save Filters",
                                                               .text = "Do wish to save the current filters?",
                                                               .icon = MessageIcon::Question,
                                                               .buttons = MessageButtons::YesNoCancel,
                                                               .defaultAnswer = {}});
    if (answer == MessageAnswer::Cancel) return;
    // A list that could not be saved is not thrown away: the error ends this here.
    if (answer == MessageAnswer::Yes) {
        bool saved = false;
        Guarded("cmdSaveList", [this, &saved] { saved = SaveList(); })();
        if (!saved) return;
    }
    lstIncludeFilters->clear();
    lstExcludeFilters->clear();
    Store();
}

}  // namespace vantrel
