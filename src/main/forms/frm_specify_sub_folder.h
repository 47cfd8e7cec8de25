#pragma once

#include <QDialog>
#include <QListView>
#include <QPushButton>
#include <optional>
#include <vector>

#include "platform/ports.h"
#include "views/pane_list.h"

namespace vantrel {

// Which of the sub-folders of a pane that differ is to be opened.
class frmSpecifySubFolder : public QDialog {
    Q_OBJECT

  public:
    // Both must outlive the dialog.
    frmSpecifySubFolder(const PaneList& pane, MessagePort& messages, QWidget* parent = nullptr);

    // The row of the pane that is chosen; nothing where none is. A pane without such a row is told, and the
    // dialog is not shown.
    std::optional<std::size_t> ShowForm();

    QListView* lstSubFolders;
    QPushButton* OKButton;
    QPushButton* CancelButton;

  private:
    void TakeChosen();

    MessagePort& messages_;
    std::vector<std::size_t> rows_;  // of the entries
};

}  // namespace vantrel
