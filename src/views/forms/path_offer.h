#pragma once

#include <QPushButton>
#include <string>

namespace vantrel {

// Offers a folder below a path box, with a click to take it. Hidden while there is nothing to offer.
class PathOffer : public QPushButton {
    Q_OBJECT

  public:
    explicit PathOffer(QWidget* parent = nullptr);

    void Offer(const std::string& path);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return {0, sizeHint().height()}; }

  Q_SIGNALS:
    void Taken(const std::string& path);

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    void ShowPath();

    std::string path_;
};

}  // namespace vantrel
