#include "single_instance.h"

#include <QLocalSocket>

namespace vantrel {
namespace {

constexpr int kAnswerMilliseconds = 2'000;
constexpr const char* kRaise = "raise";
constexpr char kSession[] = "session ";  // and its path, which holds no line end
constexpr const char* kRaised = "raised\n";

}  // namespace

SingleInstance::SingleInstance(const QString& runtimeFolder, const QString& version)
    : socket_(QStringLiteral("%1/vantrel-%2.socket").arg(runtimeFolder, version)),
      lock_(QStringLiteral("%1/vantrel-%2.lock").arg(runtimeFolder, version)) {
    // Held for as long as its process lives, however long that is; the lock of a dead one is taken over.
    lock_.setStaleLockTime(0);
    server_.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&server_, &QLocalServer::newConnection, this, &SingleInstance::Answer);
}

SingleInstance::~SingleInstance() {
    // While the lock is still held: afterwards the socket may be another's.
    server_.close();
}

SingleInstance::Start SingleInstance::Claim(const QString& session) {
    if (lock_.tryLock(0)) {
        Listen();
        return Start::First;
    }
    if (lock_.error() != QLockFile::LockFailedError) return Start::Alone;
    return AskFirst(session) ? Start::OtherRaised : Start::Alone;
}

void SingleInstance::Listen() {
    // What stands there was left behind by a process that was killed, as this one holds the lock.
    QLocalServer::removeServer(socket_);
    server_.listen(socket_);
}

// The first one answers as soon as its event loop turns, which it also does during a job.
bool SingleInstance::AskFirst(const QString& session) const {
    QLocalSocket socket;
    socket.connectToServer(socket_);
    if (!socket.waitForConnected(kAnswerMilliseconds)) return false;
    socket.write((session.isEmpty() ? QByteArray(kRaise) : kSession + session.toUtf8()) + '\n');
    return socket.waitForBytesWritten(kAnswerMilliseconds) && socket.waitForReadyRead(kAnswerMilliseconds) &&
           socket.readAll() == kRaised;
}

void SingleInstance::Answer() {
    while (QLocalSocket* socket = server_.nextPendingConnection()) {
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QLocalSocket::readyRead, this, [this, socket] {
            if (!socket->canReadLine()) return;
            const QByteArray line = socket->readLine().chopped(1);
            const bool isKnown = line == kRaise || line.startsWith(kSession);
            if (isKnown) {
                socket->write(kRaised);
                socket->flush();
            }
            socket->disconnectFromServer();
            if (isKnown) Take(line);
        });
    }
}

void SingleInstance::Take(const QByteArray& line) {
    Q_EMIT RaiseRequested();
    if (line.startsWith(kSession))
        Q_EMIT SessionRequested(QString::fromUtf8(line.mid(static_cast<qsizetype>(sizeof kSession) - 1)));
}

}  // namespace vantrel
