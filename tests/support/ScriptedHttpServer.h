#pragma once

#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>
#include <chrono>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace kelvo::test {

/// An HTTP/1.1 server on a port of 127.0.0.1 that answers as its script says, well or badly. It
/// runs on the test's own event loop.
class ScriptedHttpServer {
public:
    struct Request {
        std::string method;
        std::string path;
        std::string head; ///< request line and headers
        std::string body;
    };
    struct Reply {
        enum class Fault {
            none,
            drop,        ///< closes without a byte
            silence,     ///< never answers
            truncated,   ///< closes in the middle of the announced body
            unannounced, ///< tells no length and ends by closing
            notHttp      ///< the body alone, without a head
        };
        std::string body{};
        int status = 200;
        std::string headers{}; ///< further lines, each with its line end
        Fault fault = Fault::none;
        std::chrono::milliseconds delay{0};
    };
    using Script = std::function<Reply(const Request&)>;

    explicit ScriptedHttpServer(Script script) : script_(std::move(script)) {
        QObject::connect(&server_, &QTcpServer::newConnection, &server_, [this] { accept(); });
        server_.listen(QHostAddress::LocalHost);
    }

    std::uint16_t port() const { return server_.serverPort(); }
    std::string address() const { return "http://127.0.0.1:" + std::to_string(port()); }

    /// Ends all connections and stops listening.
    void stop() {
        server_.close();
        for (QTcpSocket* socket : server_.findChildren<QTcpSocket*>())
            socket->abort();
    }

    int connections = 0;
    std::vector<Request> requests;

private:
    void accept() {
        while (QTcpSocket* socket = server_.nextPendingConnection()) {
            ++connections;
            QObject::connect(socket, &QTcpSocket::readyRead, socket,
                             [this, socket] { read(*socket); });
            QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        }
    }

    void read(QTcpSocket& socket) {
        std::string bytes = socket.property("bytes").toByteArray().toStdString();
        bytes += socket.readAll().toStdString();
        const auto end = bytes.find("\r\n\r\n");
        std::size_t length = 0;
        if (const auto at = bytes.find("Content-Length: "); at < end)
            length = std::stoul(bytes.substr(at + 16));
        if (end == std::string::npos || bytes.size() < end + 4 + length) {
            socket.setProperty("bytes", QByteArray::fromStdString(bytes));
            return;
        }
        socket.setProperty("bytes", QByteArray());
        const auto space = bytes.find(' ');
        Request request{bytes.substr(0, space),
                        bytes.substr(space + 1, bytes.find(' ', space + 1) - space - 1),
                        bytes.substr(0, end), bytes.substr(end + 4, length)};
        requests.push_back(request);
        const Reply reply = script_(request);
        if (reply.fault == Reply::Fault::silence) return;
        if (reply.delay.count() == 0) return write(socket, reply);
        QTimer::singleShot(reply.delay, &socket, [&socket, reply] { write(socket, reply); });
    }

    static void write(QTcpSocket& socket, const Reply& reply) {
        using Fault = Reply::Fault;
        if (reply.fault == Fault::drop) return socket.disconnectFromHost();
        std::string head = "HTTP/1.1 " + std::to_string(reply.status) + " Scripted\r\n" +
                           "Content-Type: application/json\r\n" + reply.headers;
        if (reply.fault != Fault::unannounced)
            head += "Content-Length: " + std::to_string(reply.body.size()) + "\r\n";
        std::string bytes = head + "\r\n" + reply.body;
        if (reply.fault == Fault::notHttp) bytes = reply.body;
        if (reply.fault == Fault::truncated) bytes.resize(bytes.size() - reply.body.size() / 2);
        socket.write(bytes.data(), static_cast<qint64>(bytes.size()));
        if (reply.fault != Fault::none) socket.disconnectFromHost();
    }

    Script script_;
    QTcpServer server_;
};

} // namespace kelvo::test
