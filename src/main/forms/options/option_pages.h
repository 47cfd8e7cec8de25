#pragma once

#include <QHash>
#include <functional>
#include <memory>
#include <vector>

#include "main/forms/options/option_page.h"
#include "sync/csync_settings.h"

class QComboBox;
class QLineEdit;
class QListWidget;
class QTreeWidget;

namespace vantrel {

class CustomSyncTable;
class PathLabel;
class SyncMethodChooser;

// The tabs of the options window.

// Frames of check boxes and nothing else.
class CheckBoxPage : public OptionPage {
  public:
    struct Frame {
        const char* title;
        int column;  // 0 or 1
        std::vector<std::string_view> keys;
    };
    CheckBoxPage(OptionTab tab, const OptionsContext& context, const std::vector<Frame>& frames);

    static CheckBoxPage* General(const OptionsContext& context);
    static CheckBoxPage* ViewFileDiffs(const OptionsContext& context);
};

class ComparePage : public OptionPage {
    Q_OBJECT
  public:
    explicit ComparePage(const OptionsContext& context);

    // Of the chunk size.
    bool Check() override;
    QWidget* FirstControl() override;

    QLineEdit* txtChunkSize;

  Q_SIGNALS:
    void Wrong();  // what was entered cannot be taken: this tab has to be looked at

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QString warnedOf_;  // the large value that the user was warned of already
    bool asking_ = false;
};

class FilterPage : public OptionPage {
    Q_OBJECT
  public:
    explicit FilterPage(const OptionsContext& context);

    QWidget* FirstControl() override;
    // Whether Enter adds what is typed, and is not OK.
    QPushButton* AddButtonInUse() const;

    QListWidget* lstIncludeFilters;
    QListWidget* lstExcludeFilters;
    QLineEdit* txtFilter;
    QPushButton* cmdAdd;

  Q_SIGNALS:
    void TypingChanged();  // AddButtonInUse may be another one

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    bool ShowsInclude() const;
    QListWidget& ListInView() const { return ShowsInclude() ? *lstIncludeFilters : *lstExcludeFilters; }
    void ShowList();
    void ShowLengths();
    void Fill(QListWidget& list, const std::vector<std::string>& patterns);
    static std::vector<std::string> PatternsOf(const QListWidget& list);
    // The lists into the options.
    void Store();
    void cmdAdd_Click();
    void cmdDelete_Click();
    void cmdLoadList_Click();
    // False where the user cancelled.
    bool SaveList();
    void cmdNewList_Click();

    std::vector<QRadioButton*> optFilterType;
    QLabel* lblTooLong;
};

class SyncPage : public OptionPage {
  public:
    explicit SyncPage(const OptionsContext& context);

  private:
    void MethodChanged();
    void ShowTable();

    CSyncSettings settings_;
    SyncMethodChooser* method_;
    CustomSyncTable* table_;
    QGroupBox* fraCustomSync_;
    bool showing_ = false;
};

class SoundsPage : public OptionPage {
  public:
    explicit SoundsPage(const OptionsContext& context);

    QWidget* FirstControl() override;

    QCheckBox* chkSoundsOn;
    QTreeWidget* lvwEvents;
    QLineEdit* txtWaveFileSpec;

  private:
    std::string& SoundOfRow();
    void SetSound(const std::string& file);
    void ShowRow(int row);
    void chkSoundsOn_Click();
    void cmdBrowseForWave_Click();
    void cmdPlay_Click();
};

class AppearancePage : public OptionPage {
  public:
    explicit AppearancePage(const OptionsContext& context);

  private:
    void ShowFont();
    void cmdChangeFont_Click();

    QLabel* lblCurrentFont;
    QLabel* lblFontMissing;
};

class DupesPage : public OptionPage {
  public:
    explicit DupesPage(const OptionsContext& context);

  private:
    void AddIgnore(QBoxLayout& to, std::string_view key, const char* warning);
    void ChooseOtherFolder();
    void ShowFolder();

    PathLabel* lblMoveFolder;
};

// What is this program's own: all of the section "Extras" that stands in a box.
class ExtrasPage : public OptionPage {
  public:
    explicit ExtrasPage(const OptionsContext& context);

  private:
    void AddNumber(QBoxLayout& to, const OptionLine& line, const OptionBox& box);
    void AddText(QBoxLayout& to, const OptionLine& line, const OptionBox& box);
};

}  // namespace vantrel
