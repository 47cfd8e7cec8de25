#pragma once

#include <QList>
#include <QPixmap>
#include <QTimer>
#include <QWidget>
#include <string>

#include "platform/files/file_system.h"
#include "platform/pictures/avi_reader.h"

namespace vantrel {

// Plays an animation over and over, scaled to its place at any scale of the screen. Points of the colour of
// the first point of all are see-through, so that it stands on any window.
class AnimationView : public QWidget {
  public:
    explicit AnimationView(QWidget* parent = nullptr);

    // Plays the AVI file at `path`. The place stays empty when it is missing or cannot be read; the error
    // says why, and is for those who want to know.
    Error Open(const FileSystem& files, const std::string& path);
    void Stop();  // leaves the place empty

    bool IsPlaying() const { return !animation_.frames.empty(); }
    std::size_t FrameShown() const { return shown_; }
    QSize sizeHint() const override { return {160, 56}; }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    QPixmap Scaled(std::size_t frame) const;

    Animation animation_;
    std::size_t shown_ = 0;
    QTimer timer_;
    // What was scaled so far, for this size of the place in the screen's points.
    QList<QPixmap> scaled_;
    QSize scaledTo_;
};

}  // namespace vantrel
