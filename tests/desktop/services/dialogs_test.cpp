#include "desktop/services/file_pick.h"
#include "desktop/services/loopback_server.h"
#include "desktop/services/uploader.h"
#include "runtime/corvel_app.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QTcpSocket>
#include <QTest>
#include <QTimer>

#include <functional>
#include <optional>
#include <string>
#include <vector>

using namespace Corvel;
using TestSupport::TempDir;
using TestSupport::write_file;

namespace {

constexpr int patience_ms = 5000;

/// Runs `act` on the file dialog that the next call opens.
void when_dialog_opens(std::function<void(QFileDialog&)> act) {
    QTimer::singleShot(0, qApp, [act = std::move(act)] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        ASSERT_TRUE(dialog) << "no file dialog is open";
        act(*dialog);
    });
}

void choose(QFileDialog& dialog, const std::string& path) {
    dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))
        ->setText(QString::fromStdString(path));
    QMetaObject::invokeMethod(&dialog, "accept");
}

} // namespace

TEST(FilePick, TheDialogAsksForWhatWasRequested) {
    TempDir dir;
    write_file(dir / "page.json", "{}");
    std::filesystem::create_directory(dir / "folder");
    CorvelApp app;
    install_qt_file_pick(app);
    int notices = 0;
    app.on_async_change = [&] { ++notices; };

    struct Case {
        PickRequest request;
        std::string choice; ///< relative to the folder; empty: cancel
        QFileDialog::FileMode mode;
        QFileDialog::AcceptMode accept;
    };
    const std::string start = dir.path().string();
    const std::vector<Case> cases = {
        {{"file", "Open", "Pages (*.json)", start, false},
         "page.json",
         QFileDialog::ExistingFile,
         QFileDialog::AcceptOpen},
        {{"", "Open hidden", "", start, true},
         "page.json",
         QFileDialog::ExistingFile,
         QFileDialog::AcceptOpen},
        {{"dir", "Folder", "", start, false},
         "folder",
         QFileDialog::Directory,
         QFileDialog::AcceptOpen},
        {{"save", "Save", "", start, false},
         "new.json",
         QFileDialog::AnyFile,
         QFileDialog::AcceptSave},
        {{"file", "Cancelled", "", start, false},
         "",
         QFileDialog::ExistingFile,
         QFileDialog::AcceptOpen},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.request.title);
        when_dialog_opens([&](QFileDialog& dialog) {
            EXPECT_EQ(dialog.windowTitle().toStdString(), c.request.title);
            EXPECT_EQ(dialog.fileMode(), c.mode);
            EXPECT_EQ(dialog.acceptMode(), c.accept);
            EXPECT_EQ(dialog.directory().path().toStdString(), start);
            EXPECT_EQ(dialog.filter().testFlag(QDir::Hidden), c.request.show_hidden);
            EXPECT_TRUE(dialog.testOption(QFileDialog::DontUseNativeDialog));
            if (!c.request.filter.empty()) {
                EXPECT_EQ(dialog.nameFilters().join(QString()).toStdString(), c.request.filter);
            }
            if (c.choice.empty())
                dialog.reject();
            else
                choose(dialog, start + "/" + c.choice);
        });
        std::optional<std::string> picked;
        app.file_pick(c.request, [&](const std::string& path) { picked = path; });
        EXPECT_EQ(picked, c.choice.empty() ? "" : start + "/" + c.choice);
    }
    EXPECT_EQ(notices, 0) << "the render follows the handler that asked";
}

TEST(UploadFilter, FollowsTheAcceptedTypes) {
    const std::string images = "Images (*.jpg *.jpeg *.png *.webp *.gif);;All files (*)";
    const std::string videos = "Videos (*.mp4 *.webm *.mov);;All files (*)";
    EXPECT_EQ(filter_for_accept("image/*").toStdString(), images);
    EXPECT_EQ(filter_for_accept("text/plain, image/png").toStdString(), images);
    EXPECT_EQ(filter_for_accept("video/mp4").toStdString(), videos);
    for (const char* accept : {"image/png,video/mp4", "", "*/*", "application/pdf"})
        EXPECT_EQ(filter_for_accept(accept).toStdString(), "All files (*)") << accept;
}

namespace {

class Upload : public testing::Test {
protected:
    Upload() {
        install_qt_uploader(app);
        app.on_async_change = [this] { ++notices; };
        write_file(dir / "a b.png", std::string("\x89PNG\0\xff\r\n--", 10));
    }

    std::string file() const { return (dir / "a b.png").string(); }

    /// Uploads while `act` handles the dialog.
    UploadResult upload(const std::function<void(QFileDialog&)>& act) {
        std::optional<UploadResult> result;
        when_dialog_opens(act);
        app.uploader("PUT", "image/*", server.url("/in"), {{"X-Token", "t"}}, "lo\"go",
                     [&](const UploadResult& r) { result = r; });
        EXPECT_TRUE(QTest::qWaitFor([&] { return result.has_value(); }, patience_ms));
        return result.value_or(UploadResult{});
    }

    CorvelApp app;
    TempDir dir;
    std::optional<LoopbackServer::Request> received;
    LoopbackServer server{[this](const LoopbackServer::Request& request, QTcpSocket& socket) {
        received = request;
        answer(socket, "201 Created", "stored");
    }};
    int notices = 0;
};

} // namespace

TEST_F(Upload, SendsTheFileAsAPartOfAForm) {
    const UploadResult result = upload([&](QFileDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle().toStdString(), "Choose a file");
        choose(dialog, file());
    });
    EXPECT_FALSE(result.cancelled);
    EXPECT_EQ(result.status, 201);
    EXPECT_EQ(result.body, "stored");
    EXPECT_EQ(result.error, "");
    EXPECT_EQ(notices, 1);
    ASSERT_TRUE(received);
    EXPECT_EQ(received->method, "PUT");
    EXPECT_TRUE(received->head.contains("X-Token: t\r\n"));
    EXPECT_TRUE(received->head.contains("multipart/form-data; boundary="));
    EXPECT_TRUE(received->body.contains("Content-Type: image/png\r\n"));
    EXPECT_TRUE(received->body.contains(
        "Content-Disposition: form-data; name=\"lo%22go\"; filename=\"a b.png\"\r\n"))
        << received->body.toStdString();
    EXPECT_TRUE(received->body.contains(QByteArray("\r\n\r\n\x89PNG\0\xff\r\n--\r\n--", 18)));
}

TEST_F(Upload, TellsACancelAndAFileThatCannotBeRead) {
    const UploadResult cancelled = upload([](QFileDialog& dialog) { dialog.reject(); });
    EXPECT_TRUE(cancelled.cancelled);
    EXPECT_EQ(cancelled.error, "");

    const UploadResult gone = upload([&](QFileDialog& dialog) {
        QObject::connect(&dialog, &QDialog::accepted, [this] { std::filesystem::remove(file()); });
        choose(dialog, file());
    });
    EXPECT_FALSE(gone.cancelled);
    EXPECT_EQ(gone.status, 0);
    EXPECT_EQ(gone.error, "Couldn't open the selected file.");
    EXPECT_FALSE(received);
}
