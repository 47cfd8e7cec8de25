#pragma once

#include <QCursor>
#include <QGuiApplication>

namespace vantrel {

// A job may have set the busy pointer; a dialog waits for the user, not the user for the program.
class OrdinaryPointer {
  public:
    OrdinaryPointer() : needed_(QGuiApplication::overrideCursor() != nullptr) {
        if (needed_) QGuiApplication::setOverrideCursor(Qt::ArrowCursor);
    }
    ~OrdinaryPointer() {
        if (needed_) QGuiApplication::restoreOverrideCursor();
    }
    OrdinaryPointer(const OrdinaryPointer&) = delete;
    OrdinaryPointer& operator=(const OrdinaryPointer&) = delete;

  private:
    bool needed_;
};

}  // namespace vantrel
