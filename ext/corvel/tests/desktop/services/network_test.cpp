#include "desktop/services/file_pick.h"
#include "desktop/services/http.h"
#include "desktop/services/loopback_server.h"
#include "desktop/services/uploader.h"
#include "runtime/corvel_app.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QTest>
#include <QTimer>

#include <optional>
#include <string>
#include <vector>

using namespace Corvel;
using TestSupport::write_file;

namespace {

/// The answers of the server, by path.
void serve(const LoopbackServer::Request& request, QTcpSocket& socket) {
    const auto& path = request.path;
    if (path == "/missing")
        return answer(socket, "404 Not Found", "no such page");
    if (path == "/broken")
        return answer(socket, "500 Internal Server Error", QByteArray("\0\xff", 2));
    if (path == "/moved")
        return answer(socket, "302 Found", "", "Location: /ok\r\n");
    if (path == "/slam")
        return socket.abort();
    if (path != "/slow" && path != "/cut" && path != "/nonsense")
        return answer(socket, "200 OK", "fine");
    socket.write(path == "/nonsense" ? "what?\r\n\r\n"
                                     : "HTTP/1.1 200 OK\r\nContent-Length: 8\r\n\r\npart");
    QTimer::singleShot(path == "/slow" ? 80 : 0, &socket, [&socket, path] {
        socket.write(path == "/slow" ? " two" : "");
        socket.disconnectFromHost();
    });
}

/// Runs `act` on the file dialog that the next call opens.
void when_dialog_opens(std::function<void(QFileDialog&)> act) {
    QTimer::singleShot(0, qApp, [act = std::move(act)] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        ASSERT_TRUE(dialog) << "no file dialog is open";
        act(*dialog);
    });
}

/// Takes a file in the dialog; an empty path cancels it.
void choose(QFileDialog& dialog, const std::string& path) {
    dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))
        ->setText(QString::fromStdString(path));
    QMetaObject::invokeMethod(&dialog, path.empty() ? "reject" : "accept");
}

/// An application with the network services, a server and a file.
class Network : public testing::Test {
protected:
    Network() {
        install_qt_http(app);
        install_qt_uploader(app);
        install_qt_file_pick(app);
        app.on_async_change = [this] {
            ++notices;
            EXPECT_TRUE(response) << "the notice comes behind the answer";
        };
        write_file(file, std::string("\x89PNG\0\xff\r\n--", 10));
    }

    HttpResponse answer_to(const std::function<void()>& send) {
        response.reset();
        send();
        EXPECT_FALSE(response) << "the answer comes after the call";
        EXPECT_TRUE(QTest::qWaitFor([this] { return response.has_value(); }, 5000));
        QTest::qWait(1);
        return response.value_or(HttpResponse{-1, {}, {}});
    }
    HttpResponse send(const HttpRequest& request) {
        return answer_to(
            [&] { app.http(request, [this](const HttpResponse& got) { response = got; }); });
    }
    HttpResponse upload(const std::string& url) {
        when_dialog_opens([this](QFileDialog& dialog) { choose(dialog, file); });
        return answer_to([&] {
            app.uploader("PUT", "image/*", url, {{"X-Token", "t"}}, "lo\"go",
                         [this](const UploadResult& got) {
                             response = {got.status, got.body, got.error};
                         });
        });
    }

    CorvelApp app;
    TestSupport::TempDir dir;
    const std::string file = (dir / "a b.png").string();
    LoopbackServer::Request received; ///< the last one
    LoopbackServer server{[this](const LoopbackServer::Request& request, QTcpSocket& socket) {
        received = request;
        serve(request, socket);
    }};
    std::optional<HttpResponse> response;
    int notices = 0;
};

} // namespace

TEST_F(Network, StatusAndBodyComeAsTheServerSentThem) {
    const struct {
        const char* path;
        int status;
        std::string body;
    } cases[] = {
        {"/ok", 200, "fine"},       {"/missing", 404, "no such page"},
        {"/slow", 200, "part two"}, {"/broken", 500, std::string("\0\xff", 2)},
        {"/cut", 200, "part"},
    };
    for (const auto& [path, status, body] : cases) {
        SCOPED_TRACE(path);
        for (const HttpResponse& got :
             {send({"", server.url(path), {}, {}, {}}), upload(server.url(path))}) {
            EXPECT_EQ(got.status, status);
            EXPECT_EQ(got.body, body);
            EXPECT_EQ(got.error, "") << "an error with a status is not an error";
        }
        EXPECT_EQ(std::exchange(notices, 0), 2);
    }
    EXPECT_EQ(send({"", server.url("/moved"), {}, {}, {}}).body, "fine");
}

TEST_F(Network, ABodyThatIsNotWholeSaysWhy) {
    EXPECT_EQ(send({"", server.url("/slow"), {}, {}, {}}).broken_off, "");
    EXPECT_EQ(send({"", server.url("/missing"), {}, {}, {}}).broken_off, "");
    EXPECT_NE(send({"", server.url("/cut"), {}, {}, {}}).broken_off, "");
}

TEST_F(Network, AnAnswerBeyondItsLimitIsEnded) {
    qint64 sent = 0;
    bool ended = false;
    LoopbackServer endless([&](const LoopbackServer::Request&, QTcpSocket& socket) {
        QObject::connect(&socket, &QTcpSocket::disconnected, [&ended] { ended = true; });
        answer_without_end(socket, sent);
    });
    const HttpResponse got = send({"", endless.url("/"), {}, {}, {}, 1 << 20});
    EXPECT_EQ(got.status, 0);
    EXPECT_EQ(got.body, "");
    EXPECT_EQ(got.error, "the answer is longer than 1048576 bytes");
    EXPECT_TRUE(QTest::qWaitFor([&] { return ended; }, 5000)) << "the server is not told";
    // What is behind the limit lies in the buffers of the two sockets.
    EXPECT_LT(sent, 16 << 20);
    for (const auto& [limit, body] : {std::pair(4, "fine"), {3, ""}, {0, "fine"}})
        EXPECT_EQ(send({"", server.url("/ok"), {}, {}, {}, limit}).body, body) << limit;
}

TEST_F(Network, WithoutAStatusThereAreWords) {
    const std::string dead = LoopbackServer(serve).url("/ok");
    for (const std::string& url : {dead, server.url("/slam"), server.url("/nonsense"),
                                   std::string("gopher://127.0.0.1/"), std::string()}) {
        SCOPED_TRACE(url);
        for (const HttpResponse& got : {send({"GET", url, {}, {}, {}}), upload(url)}) {
            EXPECT_EQ(got.status, 0);
            EXPECT_EQ(got.body, "");
            EXPECT_NE(got.error, "");
        }
    }
}

TEST_F(Network, TheRequestArrivesAsItWasFilledIn) {
    const struct {
        const char* method;
        const char* sent_as;
        bool has_body;
    } cases[] = {{"", "GET ", false},
                 {"POST", "POST ", true},
                 {"DELETE", "DELETE ", false},
                 {"PATCH", "PATCH ", true}};
    for (const auto& [method, sent_as, has_body] : cases) {
        SCOPED_TRACE(received.head);
        const std::string body("a\0b", 3);
        send({method,
              server.url("/ok"),
              {{"X-First", "1"}, {"X-Second", "two words"}},
              body,
              "application/x-test"});
        EXPECT_TRUE(received.head.starts_with(sent_as));
        for (const char* header :
             {"X-First: 1\r\n", "X-Second: two words\r\n", "Content-Type: application/x-test\r\n"})
            EXPECT_NE(received.head.find(header), std::string::npos);
        EXPECT_EQ(received.body, has_body ? body : "");
    }
}

TEST_F(Network, AnUploadSendsTheFileAsAPartOfAForm) {
    upload(server.url("/in"));
    EXPECT_TRUE(received.head.starts_with("PUT /in"));
    EXPECT_NE(received.head.find("X-Token: t\r\n"), std::string::npos);
    EXPECT_NE(received.head.find("multipart/form-data; boundary="), std::string::npos);
    for (const std::string& part :
         {std::string("Content-Type: image/png\r\n"),
          std::string("Content-Disposition: form-data; name=\"lo%22go\"; filename=\"a b.png\"\r\n"),
          std::string("\r\n\r\n\x89PNG\0\xff\r\n--\r\n--", 18)})
        EXPECT_NE(received.body.find(part), std::string::npos) << received.body;
}

TEST_F(Network, AnUploadTellsACancelAndAFileThatCannotBeRead) {
    for (const bool cancel : {true, false}) {
        when_dialog_opens([&](QFileDialog& dialog) {
            EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Choose a file"));
            QObject::connect(&dialog, &QDialog::accepted,
                             [this] { std::filesystem::remove(file); });
            choose(dialog, cancel ? "" : file);
        });
        std::optional<UploadResult> result;
        response = HttpResponse();
        app.uploader("PUT", "", server.url("/in"), {}, "",
                     [&](const UploadResult& r) { result = r; });
        ASSERT_TRUE(QTest::qWaitFor([&] { return result.has_value(); }, 5000));
        EXPECT_EQ(result->cancelled, cancel);
        EXPECT_EQ(result->status, 0);
        EXPECT_EQ(result->error, cancel ? "" : "Couldn't open the selected file.");
    }
    EXPECT_EQ(received.path, "") << "nothing was sent";
}

TEST_F(Network, AnUploadOffersFilesOfTheAcceptedTypes) {
    const std::pair<const char*, const char*> cases[] = {
        {"text/plain, image/png", "Images (*.jpg *.jpeg *.png *.webp *.gif);;All files (*)"},
        {"video/mp4", "Videos (*.mp4 *.webm *.mov);;All files (*)"},
        {"image/png,video/mp4", "All files (*)"},
        {"", "All files (*)"},
    };
    for (const auto& [accept, filter] : cases)
        EXPECT_EQ(filter_for_accept(accept).toStdString(), filter) << accept;
}

TEST_F(Network, TheFileDialogAsksForWhatWasRequested) {
    std::filesystem::create_directory(dir / "folder");
    const std::string start = dir.path().string();
    const struct {
        PickRequest request;
        std::string choice; ///< relative to the folder; empty: cancel
        QFileDialog::FileMode mode;
    } cases[] = {
        {{"file", "Open", "Pages (*.png)", start, false}, "a b.png", QFileDialog::ExistingFile},
        {{"", "Open hidden", "", start, true}, "a b.png", QFileDialog::ExistingFile},
        {{"dir", "Folder", "", start, false}, "folder", QFileDialog::Directory},
        {{"save", "Save", "", start, false}, "new.json", QFileDialog::AnyFile},
        {{"file", "Cancelled", "", start, false}, "", QFileDialog::ExistingFile},
    };
    for (const auto& [request, choice, mode] : cases) {
        SCOPED_TRACE(request.title);
        const std::string path = choice.empty() ? "" : start + "/" + choice;
        when_dialog_opens([&, &wanted = request, wanted_mode = mode](QFileDialog& dialog) {
            EXPECT_EQ(dialog.windowTitle().toStdString(), wanted.title);
            EXPECT_EQ(dialog.fileMode(), wanted_mode);
            EXPECT_EQ(dialog.acceptMode() == QFileDialog::AcceptSave, wanted.mode == "save");
            EXPECT_EQ(dialog.directory().path().toStdString(), start);
            EXPECT_EQ(dialog.filter().testFlag(QDir::Hidden), wanted.show_hidden);
            EXPECT_TRUE(dialog.testOption(QFileDialog::DontUseNativeDialog));
            EXPECT_TRUE(wanted.filter.empty() ||
                        dialog.nameFilters().value(0).toStdString() == wanted.filter);
            choose(dialog, path);
        });
        std::optional<std::string> picked;
        app.file_pick(request, [&](const std::string& chosen) { picked = chosen; });
        EXPECT_EQ(picked, path);
    }
    EXPECT_EQ(notices, 0) << "the render follows the handler that asked";
}
