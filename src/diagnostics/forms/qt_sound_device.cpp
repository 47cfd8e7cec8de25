#include "diagnostics/forms/qt_sound_device.h"

#include <unistd.h>

#include <QAudioDevice>
#include <QMediaDevices>
#include <QSoundEffect>
#include <QUrl>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <mutex>
#include <optional>
#include <string_view>
#include <utility>

#include "platform/forms/qt_text.h"

namespace vantrel {
namespace {

// The multimedia library takes its own lock when it is unloaded, which a thread that hangs in it holds: the
// process would not end. So it ends before that, when all else is done.
void LeaveLibrariesAtExit() {
#ifdef __GLIBC__
    on_exit(
        [](int status, void*) {
            std::fflush(nullptr);
            _exit(status);
        },
        nullptr);
#endif
}

}  // namespace

// What both threads see; the one that lives longer keeps it.
struct QtSoundDevice::State {
    std::mutex mutex;
    std::condition_variable changed;
    std::optional<int> devices;
    unsigned begun = 0, ended = 0;  // numbers of the sounds asked for

    void Set(const std::function<void()>& change) {
        {
            const std::lock_guard lock(mutex);
            change();
        }
        changed.notify_all();
    }
};

// Lives on the thread of the sound.
class QtSoundDevice::Player : public QObject {
  public:
    explicit Player(std::shared_ptr<State> state) : state_(std::move(state)) {}

    void CountDevices() {
        const int devices = static_cast<int>(QMediaDevices::audioOutputs().size());
        state_->Set([&] { state_->devices = devices; });
    }

    void Play(const QString& file, unsigned number) {
        effect_ = std::make_unique<QSoundEffect>();
        QSoundEffect* effect = effect_.get();
        const auto end = [this, number] { state_->Set([&] { state_->ended = number; }); };
        connect(effect, &QSoundEffect::statusChanged, this, [effect, end] {
            if (effect->status() == QSoundEffect::Error) end();
        });
        connect(effect, &QSoundEffect::playingChanged, this, [effect, end] {
            if (!effect->isPlaying()) end();
        });
        effect->setSource(QUrl::fromLocalFile(file));
        effect->play();
    }

  private:
    std::shared_ptr<State> state_;
    std::unique_ptr<QSoundEffect> effect_;
};

QtSoundDevice::QtSoundDevice(const FileSystem& files)
    : files_(files), state_(std::make_shared<State>()), thread_(new QThread), player_(new Player(state_)) {
    thread_->setObjectName(QStringLiteral("sound"));
    player_->moveToThread(thread_);
    QObject::connect(thread_, &QThread::finished, player_, &QObject::deleteLater);
    QMetaObject::invokeMethod(
        player_, [player = player_] { player->CountDevices(); }, Qt::QueuedConnection);
    thread_->start();
}

QtSoundDevice::~QtSoundDevice() {
    thread_->quit();
    if (thread_->wait(kMostWaitForThread))
        delete thread_;
    else
        LeaveLibrariesAtExit();
}

int QtSoundDevice::NumberOfDevices() {
    std::unique_lock lock(state_->mutex);
    if (!std::exchange(waitedForDevices_, true))
        state_->changed.wait_for(lock, std::chrono::milliseconds(kMostWaitForDevices),
                                 [this] { return state_->devices.has_value(); });
    return state_->devices.value_or(0);
}

bool QtSoundDevice::IsWaveFile(const std::string& file) const {
    ReadFile wave;
    char head[12];
    std::size_t got = 0;
    if (!files_.OpenForReading(file, wave).IsOk() || !wave.ReadAt(0, head, sizeof head, got).IsOk())
        return false;
    const std::string_view text(head, got);
    return text.starts_with("RIFF") && text.ends_with("WAVE");
}

bool QtSoundDevice::Play(const std::string& file, bool async) {
    if (NumberOfDevices() < 1 || !IsWaveFile(file)) return false;
    const unsigned number = ++state_->begun;  // counted on this thread only
    QMetaObject::invokeMethod(
        player_, [player = player_, path = DialogPath(file), number] { player->Play(path, number); },
        Qt::QueuedConnection);
    if (async) return true;
    std::unique_lock lock(state_->mutex);
    return state_->changed.wait_for(lock, std::chrono::milliseconds(kMostWaitForSound),
                                    [&] { return state_->ended >= number; });
}

}  // namespace vantrel
