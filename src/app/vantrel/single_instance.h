#pragma once

#include <QLocalServer>
#include <QLockFile>
#include <QObject>
#include <QString>

namespace vantrel {

// One instance for each user and version: a lock file says who is the first, a socket beside it lets a second
// start ask the first one to come to the front.
class SingleInstance : public QObject {
    Q_OBJECT

  public:
    enum class Start {
        First,        // this one goes on, and listens
        OtherRaised,  // there is a first one, it was asked to show itself: this one ends
        Alone,        // neither could be found out; this one goes on
    };

    // `runtimeFolder` is the user's own, as in "/run/user/1000".
    SingleInstance(const QString& runtimeFolder, const QString& version);
    ~SingleInstance() override;

    // `session`, the full path of a session in the engine's form, is what the first one is asked to open.
    Start Claim(const QString& session = {});

  Q_SIGNALS:
    // A second start of the same version.
    void RaiseRequested();
    // Behind that, where it was started with a session.
    void SessionRequested(const QString& path);

  private:
    bool AskFirst(const QString& session) const;
    void Listen();
    void Answer();
    void Take(const QByteArray& line);

    QString socket_;
    QLockFile lock_;
    QLocalServer server_;
};

}  // namespace vantrel
