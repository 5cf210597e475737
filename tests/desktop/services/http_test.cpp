#include "desktop/services/http.h"
#include "desktop/services/loopback_server.h"
#include "runtime/corvel_app.h"

#include <gtest/gtest.h>

#include <QTcpSocket>
#include <QTest>
#include <QTimer>

#include <optional>
#include <string>
#include <vector>

using namespace Corvel;

namespace {

constexpr int patience_ms = 5000;

/// The answers of the server, by path.
void serve(const LoopbackServer::Request& request, QTcpSocket& socket) {
    if (request.path == "/missing") {
        answer(socket, "404 Not Found", "no such page");
    } else if (request.path == "/broken") {
        answer(socket, "500 Internal Server Error", QByteArray("\0\xff", 2));
    } else if (request.path == "/moved") {
        answer(socket, "302 Found", "", "Location: /ok\r\n");
    } else if (request.path == "/cut") {
        socket.write("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\npart");
        socket.disconnectFromHost();
    } else if (request.path == "/slow") {
        socket.write("HTTP/1.1 200 OK\r\nContent-Length: 4\r\n\r\nsl");
        QTimer::singleShot(80, &socket, [&socket] {
            socket.write("ow");
            socket.disconnectFromHost();
        });
    } else if (request.path == "/slam") {
        socket.abort();
    } else if (request.path == "/nonsense") {
        socket.write("what?\r\n\r\n");
        socket.disconnectFromHost();
    } else if (request.path == "/echo") {
        answer(socket, "200 OK", request.head + "\n\n" + request.body);
    } else {
        answer(socket, "200 OK", "fine");
    }
}

class Http : public testing::Test {
protected:
    Http() {
        install_qt_http(app);
        app.on_async_change = [this] {
            ++notices;
            answered_before_notice = response.has_value();
        };
    }

    HttpResponse send(const HttpRequest& request) {
        response.reset();
        app.http(request, [this](const HttpResponse& r) { response = r; });
        EXPECT_FALSE(response) << "the answer comes after the call";
        EXPECT_TRUE(QTest::qWaitFor([this] { return response.has_value(); }, patience_ms));
        return response.value_or(HttpResponse{-1, {}, {}});
    }

    CorvelApp app;
    LoopbackServer server{serve};
    std::optional<HttpResponse> response;
    int notices = 0;
    bool answered_before_notice = false;
};

} // namespace

TEST_F(Http, StatusAndBodyComeAsTheServerSentThem) {
    struct Case {
        const char* path;
        int status;
        std::string body;
    };
    const std::vector<Case> cases = {
        {"/ok", 200, "fine"},
        {"/missing", 404, "no such page"},
        {"/broken", 500, std::string("\0\xff", 2)},
        {"/moved", 200, "fine"},
        {"/slow", 200, "slow"},
        {"/cut", 200, "part"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.path);
        notices = 0;
        const HttpResponse got = send({"", server.url(c.path), {}, {}, {}});
        EXPECT_EQ(got.status, c.status);
        EXPECT_EQ(got.body, c.body);
        EXPECT_EQ(got.error, "") << "an error with a status is not an error";
        EXPECT_EQ(notices, 1);
        EXPECT_TRUE(answered_before_notice);
    }
}

TEST_F(Http, WithoutAStatusThereAreWords) {
    std::string dead;
    {
        LoopbackServer gone(serve);
        dead = gone.url("/ok");
    }
    for (const std::string& url :
         {dead, server.url("/slam"), server.url("/nonsense"), std::string("http://"),
          std::string("nonsense"), std::string("gopher://127.0.0.1/"), std::string()}) {
        SCOPED_TRACE(url);
        const HttpResponse got = send({"GET", url, {}, {}, {}});
        EXPECT_EQ(got.status, 0);
        EXPECT_EQ(got.body, "");
        EXPECT_NE(got.error, "");
    }
}

TEST_F(Http, TheRequestArrivesAsItWasFilledIn) {
    struct Case {
        const char* method;
        const char* sent_as;
        bool has_body;
    };
    for (const Case& c : std::vector<Case>{{"", "GET ", false},
                                           {"GET", "GET ", false},
                                           {"POST", "POST ", true},
                                           {"DELETE", "DELETE ", false},
                                           {"PATCH", "PATCH ", true}}) {
        SCOPED_TRACE(c.method);
        const HttpResponse got = send({c.method,
                                       server.url("/echo"),
                                       {{"X-First", "1"}, {"X-Second", "two words"}},
                                       std::string("a\0b", 3),
                                       "application/x-test"});
        EXPECT_EQ(got.status, 200);
        EXPECT_TRUE(got.body.starts_with(c.sent_as)) << got.body;
        EXPECT_NE(got.body.find("X-First: 1\r\n"), std::string::npos);
        EXPECT_NE(got.body.find("X-Second: two words\r\n"), std::string::npos);
        EXPECT_NE(got.body.find("Content-Type: application/x-test"), std::string::npos);
        EXPECT_EQ(got.body.ends_with(std::string("\n\na\0b", 5)), c.has_body);
    }
}

TEST_F(Http, CallbacksMayBeAbsent) {
    app.on_async_change = nullptr;
    app.http({"GET", server.url("/ok"), {}, {}, {}}, nullptr);
    EXPECT_TRUE(QTest::qWaitFor([this] { return server.requests() == 1; }, patience_ms));
    QTest::qWait(20);
}
