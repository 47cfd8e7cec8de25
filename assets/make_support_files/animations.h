#pragma once

#include <QImage>
#include <QList>

// The frames of the three animations. The colour of the first point stands for "nothing here".
QList<QImage> ScanFilesFrames();     // two pages read line by line
QList<QImage> FileTreeListFrames();  // the tree of a folder growing
QList<QImage> FindComputerFrames();  // a magnifier over a screen

inline constexpr int kFrameMilliseconds = 80;
