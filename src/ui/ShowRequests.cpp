#include "ui/ShowRequests.h"

#include <QFile>
#include <QLocalServer>
#include <QLocalSocket>

namespace korvenal::ui {

namespace {

constexpr char ShowMessage[] = "2035";
constexpr qint64 LongestMessage = 16;  ///< bytes

}  // namespace

ShowRequests::ShowRequests(const QString& folder, std::function<void()> onShow)
    : onShow_(std::move(onShow)), server_(new QLocalServer(this)) {
  connect(server_, &QLocalServer::newConnection, this, [this] { doServe(); });
  server_->setSocketOptions(QLocalServer::UserAccessOption);
  QLocalServer::removeServer(socketIn(folder));
  if (server_->listen(socketIn(folder)))
    QFile::setPermissions(socketIn(folder), QFile::ReadOwner | QFile::WriteOwner);
}

QString ShowRequests::socketIn(const QString& folder) {
  return folder + QStringLiteral("KORVEN2.socket");
}

void ShowRequests::doServe() {
  while (QLocalSocket* client = server_->nextPendingConnection()) {
    connect(client, &QLocalSocket::disconnected, client, &QObject::deleteLater);
    const auto read = [this, client] {
      if (client->bytesAvailable() < static_cast<qint64>(sizeof ShowMessage) - 1) return;
      const bool isShow = client->read(LongestMessage).trimmed() == ShowMessage;
      client->disconnectFromServer();
      if (isShow) onShow_();
    };
    connect(client, &QLocalSocket::readyRead, this, read);
    read();  // what came before anyone listened
  }
}

}  // namespace korvenal::ui
