#pragma once

#include <QSplitter>

namespace vantrel {

// Splitter: the divider of the two panes. It has the colour of buttons, and is gray while it is dragged.
class PaneSplitter : public QSplitter {
    Q_OBJECT

  public:
    explicit PaneSplitter(QWidget* parent = nullptr);

  protected:
    QSplitterHandle* createHandle() override;
};

}  // namespace vantrel
