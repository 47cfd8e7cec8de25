#include "fileops/forms/frm_rename_multiple.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFocusEvent>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScopedValueRollback>
#include <QTableView>
#include <QTimer>
#include <algorithm>
#include <array>

#include "fileops/forms/rename_list_model.h"
#include "platform/files/short_names.h"
#include "platform/forms/busy_pointer.h"
#include "platform/forms/qt_text.h"
#include "platform/names/names.h"

namespace vantrel {
namespace {

// Up to here each key shows its outcome at once; beyond it the list follows when the keys rest.
constexpr std::size_t kPreviewedAtOnce = 20'000;
constexpr int kRest = 300;  // milliseconds

std::string Typed(const QLineEdit& field) {
    return PathFromUser(FromQString(field.text()));
}

std::optional<std::string> TextOf(const QCheckBox& check, const QLineEdit& field) {
    if (!check.isChecked()) return std::nullopt;
    return Typed(field);
}

QString Outcome(const std::vector<RevisedName>& revised) {
    std::array<std::size_t, 4> counts{};
    for (const RevisedName& name : revised) ++counts[static_cast<std::size_t>(name.verdict)];
    const auto count = [&](RenameVerdict verdict) { return counts[static_cast<std::size_t>(verdict)]; };
    QString text = QStringLiteral("%1 of %2 object(s) will get a new name.")
                       .arg(count(RenameVerdict::Free))
                       .arg(revised.size());
    if (count(RenameVerdict::Conflict) > 0)
        text += QStringLiteral("  Conflicts: %1.").arg(count(RenameVerdict::Conflict));
    if (count(RenameVerdict::Impossible) > 0)
        text += QStringLiteral("  Names that cannot be: %1.").arg(count(RenameVerdict::Impossible));
    return text;
}

}  // namespace

struct frmRenameMultiple::NumberField {
    QLineEdit* field;
    QString reset;
    const char* message;
};

void frmRenameMultiple::Form_Load() {
    names_.reserve(objects_.size());
    for (const ObjectToRename& object : objects_) names_.push_back({object.name, {}});
    ThrowIfFailed(MultipleRename::ReadNames(parts_.tools.files, folder_.path, inFolder_));
    Preview();
}

bool frmRenameMultiple::ShowForm() {
    if (parts_.tools.reporter.GuardRun("frmRenameMultiple.Form_Load", [this] { Form_Load(); })) exec();
    return renamed_;
}

void frmRenameMultiple::EnableFields() {
    txtFileName->setEnabled(chkChangeFileName->isChecked());
    txtExtension->setEnabled(chkChangeExtension->isChecked());
    txtNamePrefix->setEnabled(chkAddPrefixToFilename->isChecked());
    txtNameSuffix->setEnabled(chkAddSuffixToFilename->isChecked());
    fraAutoNumber->setEnabled(chkNameAutoNumber->isChecked());
}

std::vector<frmRenameMultiple::NumberField> frmRenameMultiple::NumberFields() {
    const QString length = optNumberExtension->isChecked() ? QStringLiteral("3") : QStringLiteral("8");
    return {{txtStartsWith, QStringLiteral("1"), "is not a valid starting value."},
            {txtIncrement, QStringLiteral("1"), "is not a valid increment value."},
            {txtLength, length, "is not a valid length value."}};
}

bool frmRenameMultiple::Validate(const NumberField& field) {
    const QString entered = field.field->text().trimmed();
    if (PositiveWholeNumber(FromQString(entered))) {
        field.field->setText(entered);
        return true;
    }
    field.field->setText(field.reset);
    parts_.tools.messages.ShowInformationMessage("Invalid Value",
                                                 "\"" + FromQString(entered) + "\" " + field.message +
                                                     "\r\n\r\nPlease enter a positive whole number.");
    field.field->setFocus();
    field.field->selectAll();
    return false;
}

bool frmRenameMultiple::ValidateNumbers() {
    if (!chkNameAutoNumber->isChecked()) return true;
    const QScopedValueRollback<bool> validating(validating_, true);
    for (const NumberField& field : NumberFields())
        if (!Validate(field)) return false;
    return true;
}

// A field is looked at when it is left for another control of the window.
bool frmRenameMultiple::eventFilter(QObject* watched, QEvent* event) {
    const bool left = event->type() == QEvent::FocusOut && isVisible() && !validating_ && !running_;
    if (!left || !static_cast<QWidget*>(watched)->isEnabled()) return QDialog::eventFilter(watched, event);
    const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
    if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason)
        return QDialog::eventFilter(watched, event);
    // When the focus has moved on: what is said and given back here would be moved over by that.
    QTimer::singleShot(0, this, [this, watched] {
        if (!isVisible() || validating_ || cmdClose->hasFocus()) return;
        const QScopedValueRollback<bool> validating(validating_, true);
        for (const NumberField& field : NumberFields())
            if (field.field == watched) Validate(field);
    });
    return QDialog::eventFilter(watched, event);
}

RenameRules frmRenameMultiple::Rules() {
    RenameRules rules;
    rules.shortFileName = chkShortFileName->isChecked();
    rules.removeInternalSpaces = chkRemoveSpaces->isChecked();
    rules.removeExtension = chkRemoveExtension->isChecked();
    rules.capitalization = static_cast<Capitalization>(cboCapitalization->currentIndex());
    rules.fileName = TextOf(*chkChangeFileName, *txtFileName);
    rules.extension = TextOf(*chkChangeExtension, *txtExtension);
    rules.prefix = TextOf(*chkAddPrefixToFilename, *txtNamePrefix);
    rules.suffix = TextOf(*chkAddSuffixToFilename, *txtNameSuffix);
    if (!chkNameAutoNumber->isChecked()) return rules;
    NumberSequence numbers;
    const auto value = [](const QLineEdit* field, std::int64_t otherwise) {
        return PositiveWholeNumber(FromQString(field->text())).value_or(otherwise);
    };
    numbers.place =
        optNumberExtension->isChecked() ? NumberSequence::Place::Extension : NumberSequence::Place::FileName;
    numbers.startsWith = value(txtStartsWith, numbers.startsWith);
    numbers.incrementBy = value(txtIncrement, numbers.incrementBy);
    numbers.length = value(txtLength, numbers.length);
    rules.numbers = numbers;
    return rules;
}

void frmRenameMultiple::ReadShortNamesOnce() {
    if (hasShortNames_ || !chkShortFileName->isChecked()) return;
    hasShortNames_ = true;
    std::unordered_map<std::string, std::string> shortNames;
    ThrowIfFailed(ReadShortNames(parts_.tools.files, folder_.path, shortNames));
    for (NameToChange& name : names_)
        if (const auto found = shortNames.find(name.name); found != shortNames.end())
            name.shortName = found->second;
}

void frmRenameMultiple::Preview() {
    previewSoon_->stop();
    ReadShortNamesOnce();
    std::vector<RevisedName> revised = PreviewRename(names_, Rules(), inFolder_);
    lblOutcome->setText(Outcome(revised));
    model_->Show(std::move(revised));
}

void frmRenameMultiple::RulesChanged() {
    if (running_) return;
    if (objects_.size() > kPreviewedAtOnce)
        previewSoon_->start(kRest);
    else
        parts_.tools.reporter.GuardRun("frmRenameMultiple.cmdPreview_Click", [this] { Preview(); });
}

void frmRenameMultiple::cmdPreview_Click() {
    if (ValidateNumbers()) Preview();
}

void frmRenameMultiple::cmdOK_Click() {
    if (!ValidateNumbers()) return;
    Preview();
    parts_.tools.loop.Yield();
    std::vector<RenameStep> steps;
    std::vector<std::string> names;
    for (std::size_t i = 0; i < objects_.size(); ++i) {
        const RevisedName& revised = model_->Revised()[i];
        if (revised.verdict != RenameVerdict::Free && revised.verdict != RenameVerdict::Impossible) continue;
        steps.push_back({objects_[i].name, revised.name, objects_[i].kind});
        names.push_back(objects_[i].name);
    }
    if (steps.empty()) return accept();
    Run(
        [&](const BatchRenames::Progress& progress) {
            return parts_.rename.Rename(folder_, std::move(steps), progress);
        },
        names);
}

void frmRenameMultiple::cmdUndo_Click() {
    Run([this](const BatchRenames::Progress& progress) { return parts_.rename.Undo(progress); }, {});
}

void frmRenameMultiple::Run(const std::function<RenameResult(const BatchRenames::Progress&)>& batch,
                            const std::vector<std::string>& names) {
    RenameResult result;
    {
        const QScopedValueRollback<bool> running(running_, true);
        const BusyPointer pointer;
        for (auto* child : findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly))
            if (child != ProgressBar1 && child != cmdClose) child->setEnabled(false);
        ProgressBar1->setMaximum(std::max(static_cast<int>(objects_.size()) - 1, 1));
        result = batch([this](std::size_t done) {
            ProgressBar1->setValue(std::min(static_cast<int>(done), ProgressBar1->maximum()));
        });
    }
    for (auto* child : findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) child->setEnabled(true);
    EnableFields();
    ProgressBar1->reset();
    renamed_ = renamed_ || result.AnyDone();
    if (!result.notBegun.IsOk())
        throw ErrorException(
            result.notBegun.WithDescription("Nothing was renamed: " + result.notBegun.Description()));
    std::vector<std::string> about = names;
    for (std::size_t i = about.size(); i < result.objects.size(); ++i)
        about.push_back(result.objects[i].standsAs);
    summary_ = SummaryOf(result, about);
    if (const std::string problems = DescribeProblems(result, about); !problems.empty())
        parts_.tools.messages.Ask({.title = "Multiple Rename",
                                   .text = problems,
                                   .icon = MessageIcon::Warning,
                                   .defaultAnswer = {}});
    accept();
}

void frmRenameMultiple::done(int result) {
    if (running_) {
        if (parts_.requestCancel) parts_.requestCancel();
        return;
    }
    QDialog::done(result);
}

}  // namespace vantrel
