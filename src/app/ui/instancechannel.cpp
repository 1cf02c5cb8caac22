#include "app/ui/instancechannel.h"

#include <QLocalServer>
#include <QLocalSocket>

#include <unistd.h>

namespace pv {

namespace {
// One request: the path in UTF-8 and a line end; the answer "ok" and a line end.
constexpr char kAnswer[] = "ok\n";
} // namespace

QString instanceSocketName() {
    const QByteArray name = qgetenv("PAIRVIEW_INSTANCE");
    return name.isEmpty() ? QString("pairview-%1").arg(::getuid()) : QString::fromLocal8Bit(name);
}

bool handOverToRunningInstance(const QString& file, int timeoutMs) {
    QLocalSocket socket;
    socket.connectToServer(instanceSocketName());
    if (!socket.waitForConnected(timeoutMs))
        return false;
    socket.write(file.toUtf8() + '\n');
    if (!socket.waitForBytesWritten(timeoutMs))
        return false;
    QByteArray answer;
    while (!answer.contains('\n') && socket.waitForReadyRead(timeoutMs))
        answer += socket.readAll();
    return answer == kAnswer;
}

InstanceServer::InstanceServer(QObject* parent)
    : QObject(parent), m_server(new QLocalServer(this)) {
    m_server->setSocketOptions(QLocalServer::UserAccessOption);
    connect(m_server, &QLocalServer::newConnection, this, [this] {
        while (QLocalSocket* socket = m_server->nextPendingConnection()) {
            connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
            connect(socket, &QLocalSocket::readyRead, this, [this, socket] {
                if (!socket->canReadLine())
                    return;
                QByteArray line = socket->readLine();
                line.chop(1);
                socket->write(kAnswer);
                socket->flush();
                emit fileRequested(QString::fromUtf8(line));
            });
        }
    });
}

bool InstanceServer::listen() {
    const QString name = instanceSocketName();
    // Another instance answers: it keeps the socket. A socket left behind by an
    // instance that died answers nobody and is taken over.
    QLocalSocket probe;
    probe.connectToServer(name);
    if (probe.waitForConnected(500))
        return false;
    QLocalServer::removeServer(name);
    return m_server->listen(name);
}

} // namespace pv
