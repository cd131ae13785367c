#include "platform/modelserver/LoopbackAccess.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QNetworkProxy>
#include <QNetworkReply>
#include <array>

#include "ModelBench.h"

namespace kelvo::test {
namespace {

using ::testing::HasSubstr;

TEST(LoopbackAccess, KnowsTheAddressesOfThisMachine) {
    for (const char* address :
         {"http://127.0.0.1:11434/api", "http://127.8.9.10/", "http://[::1]:80/"})
        EXPECT_TRUE(isLoopback(QUrl(address))) << address;
    for (const char* address :
         {"http://192.168.1.20:11434/", "http://8.8.8.8/", "http://localhost:11434/",
          "http://127.0.0.1.example.com/", "http://example.com/127.0.0.1", "https://127.0.0.1/",
          "ftp://127.0.0.1/", "file:///etc/passwd", "http://127.0.0.1@192.168.1.20/",
          "http://user@127.0.0.1/", "http://0.0.0.0/", "http://[::ffff:8.8.8.8]/", "http://", ""})
        EXPECT_FALSE(isLoopback(QUrl(address))) << address;
}

TEST(LoopbackAccess, RefusesEveryOtherAddressWithoutAConnection) {
    // A server that would answer, under a name and an address that are not taken.
    ScriptedHttpServer server([](const auto&) { return Reply{.body = "{}"}; });
    LoopbackAccess access;
    const std::string port = std::to_string(server.port());
    for (const std::string& address :
         {"http://localhost:" + port + "/", "http://0.0.0.0:" + port + "/",
          "https://127.0.0.1:" + port + "/", std::string("http://192.0.2.1/")}) {
        for (const bool post : {false, true}) {
            const QNetworkRequest request(QUrl(QString::fromStdString(address)));
            const std::unique_ptr<QNetworkReply> reply(post ? access.post(request, "{}")
                                                            : access.get(request));
            ASSERT_TRUE(eventually([&] { return reply->isFinished(); })) << address;
            handleEvents();
            EXPECT_EQ(reply->error(), QNetworkReply::ProtocolUnknownError) << address;
        }
    }
    EXPECT_EQ(server.connections, 0);
}

TEST(LoopbackAccess, FollowsNoRedirectInACallOrWhileLookingForAServer) {
    ScriptedModelServer elsewhere(Api::native);
    const std::string location = "Location: " + elsewhere.http().address();
    for (const int status : {301, 302, 307, 308}) {
        ModelBench bench(Api::native);
        bench.server.chat = {{.status = status, .headers = location + "/api/chat\r\n"}};
        EXPECT_THAT(bench.ask(), HasSubstr("elsewhere")) << status;
    }
    ScriptedHttpServer server([&](const auto& request) {
        return Reply{.status = 302, .headers = location + request.path + "\r\n"};
    });
    LoopbackModel model(builtIn(), patient({server.port()}));
    EXPECT_EQ(asked(model), "built-in answer");
    EXPECT_EQ(elsewhere.http().connections, 0);
}

TEST(LoopbackAccess, UsesNoProxyWhateverTheApplicationAndTheEnvironmentSay) {
    ScriptedHttpServer proxy([](const auto&) { return Reply{.body = "{}"}; });
    const QByteArray address = QByteArray::fromStdString(proxy.address());
    constexpr std::array names = {"http_proxy", "HTTP_PROXY", "all_proxy", "ALL_PROXY"};
    for (const char* name : names)
        qputenv(name, address);
    qunsetenv("no_proxy");
    QNetworkProxyFactory::setUseSystemConfiguration(true);
    for (const bool byApplication : {false, true}) {
        if (byApplication) {
            QNetworkProxy::setApplicationProxy(
                QNetworkProxy(QNetworkProxy::HttpProxy, QStringLiteral("127.0.0.1"), proxy.port()));
        }
        EXPECT_EQ(ModelBench(Api::native, {word}).ask(), word);
    }
    QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
    QNetworkProxyFactory::setUseSystemConfiguration(false);
    for (const char* name : names)
        qunsetenv(name);
    EXPECT_EQ(proxy.connections, 0);
    // Qt keeps these addresses from proxies by itself; this does not lean on it.
    EXPECT_EQ(LoopbackAccess().proxy().type(), QNetworkProxy::NoProxy);
}

TEST(LoopbackAccess, SendsNothingThatNamesThePersonOrTheMachine) {
    ModelBench bench(Api::native, {word});
    bench.server.lists["/api/version"].headers = "Set-Cookie: id=1\r\n";
    EXPECT_EQ(bench.ask(), word);
    for (const auto& request : bench.server.http().requests) {
        EXPECT_THAT(request.head, ::testing::Not(HasSubstr("Cookie")));
        EXPECT_THAT(request.head, ::testing::Not(HasSubstr("Authorization")));
        EXPECT_THAT(request.head, HasSubstr("Accept-Language: en\r\n"));
        EXPECT_THAT(request.head, HasSubstr("User-Agent: kelvo"));
        EXPECT_THAT(request.head, HasSubstr("Accept-Encoding: identity"));
    }
}

} // namespace
} // namespace kelvo::test
