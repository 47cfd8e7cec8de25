#pragma once

#include <QLabel>
#include <QResizeEvent>
#include <string_view>

#include "platform/forms/qt_text.h"

namespace vantrel {

// A label for a path: elided in the middle where there is no room, whole in its tip.
class PathLabel : public QLabel {
  public:
    explicit PathLabel(std::string_view path = {}) {
        setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        setTextFormat(Qt::PlainText);
        SetPath(path);
    }
    void SetPath(std::string_view path) {
        path_ = DisplayQString(path);
        setToolTip(path_.toHtmlEscaped());
        setAccessibleName(path_);
        Elide();
    }

  protected:
    void resizeEvent(QResizeEvent* event) override {
        QLabel::resizeEvent(event);
        Elide();
    }

  private:
    void Elide() { setText(fontMetrics().elidedText(path_, Qt::ElideMiddle, width())); }
    QString path_;
};

}  // namespace vantrel
