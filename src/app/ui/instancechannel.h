#pragma once
// One running Pairview takes the reports that scripts open: `pairview --open
// FILE` hands the file's path to the running instance over a local socket and
// ends; with none running it starts as usual and opens the file itself. The
// socket is per user ("pairview-UID", or $PAIRVIEW_INSTANCE).

#include <QObject>
#include <QString>

class QLocalServer;

namespace pv {

QString instanceSocketName();

// Hands `file` to the running instance; true once that instance has taken it.
bool handOverToRunningInstance(const QString& file, int timeoutMs = 3000);

// The running instance's end: reports each path handed over.
class InstanceServer : public QObject {
    Q_OBJECT
  public:
    explicit InstanceServer(QObject* parent = nullptr);
    // Starts listening; false when another instance already listens (or the
    // socket cannot be made).
    bool listen();

  signals:
    void fileRequested(const QString& path);

  private:
    QLocalServer* m_server;
};

} // namespace pv
