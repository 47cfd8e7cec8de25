#pragma once

#include <QDialog>
#include <vector>

#include "core/toolbox.h"
#include "dupes/dupes_folder.h"

class QPushButton;
class QTableView;

namespace vantrel {

// "Restore from DUPES": the files in the DUPES folder, of which the user chooses those to be put back. It
// only asks.
class frmRestoreDupes : public QDialog {
    Q_OBJECT
  public:
    frmRestoreDupes(const Toolbox& tools, std::vector<StoredDupe> stored, QWidget* parent = nullptr);

    // Shows the dialog; what was chosen, nothing where the user closed it.
    std::vector<StoredDupe> ShowForm();

    QTableView* lvwStored;
    QPushButton* cmdRestore;
    QPushButton* cmdSelectAll;
    QPushButton* cmdCancel;

  private:
    void LayOut();

    std::vector<StoredDupe> stored_;
};

}  // namespace vantrel
