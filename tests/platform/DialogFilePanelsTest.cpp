#include <QtCore/QTimer>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMessageBox>

#include "platform/qt/DialogFilePanels.h"
#include "support/TemporaryFolder.h"

#include <doctest/doctest.h>

#include <functional>

using namespace tessivo;
using test::TemporaryFolder;

namespace {

/// Presses Return where the name is typed.
void pressReturn(QLineEdit& name) {
    QApplication::setActiveWindow(name.window());
    name.setFocus();
    REQUIRE(name.hasFocus());
    for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, Qt::Key_Return, Qt::NoModifier);
        QApplication::sendEvent(&name, &event);
    }
}

/// Asks for a place, and does `act` on the panel once it stands open, as the operator would.
std::optional<FileLocation> save(const std::string& proposedName,
                                 std::function<void(QFileDialog&, QLineEdit&)> act) {
    static int count = 1;
    static char name[] = "test";
    static char* arguments[] = {name, nullptr};
    // Never destroyed: the input devices that Qt keeps to the program's end need it.
    static auto* const application = new QApplication(count, arguments);
    REQUIRE(application != nullptr);
    QTimer::singleShot(0, [act = std::move(act)] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        REQUIRE(dialog != nullptr);
        act(*dialog, *dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit")));
    });
    static DialogFilePanels panels;
    return panels.chooseSaveLocation({"Enregistrer le show", proposedName, "tessivo"});
}

}  // namespace

TEST_CASE("the save panel proposes a safe name, and adds the extension that a typed one lacks") {
    const TemporaryFolder folder;
    const struct {
        const char* proposed;
        const char* shown;
        const char* typed;
        const char* chosen;
    } table[] = {{"AC/DC.tessivo", "AC-DC.tessivo", nullptr, "AC-DC.tessivo"},
                 {"x.tessivo", "x.tessivo", "Tourn\u00E9e 2.1", "Tourn\u00E9e 2.1.tessivo"},
                 {"x.tessivo", "x.tessivo", "Gala.TESSIVO", "Gala.TESSIVO"}};
    for (const auto& row : table) {
        CAPTURE(row.chosen);
        const auto chosen = save(row.proposed, [&](QFileDialog& dialog, QLineEdit& name) {
            CHECK(dialog.windowTitle() == QStringLiteral("Enregistrer le show"));
            CHECK(name.text() == QString::fromUtf8(row.shown));
            dialog.setDirectory(QString::fromStdString(folder.path()));
            if (row.typed != nullptr) {
                name.setText(QString::fromUtf8(row.typed));
            }
            pressReturn(name);
        });
        CHECK(chosen == folder.path(row.chosen));
    }
    CHECK_FALSE(save("x.tessivo", [&](QFileDialog& dialog, QLineEdit&) {
        // Where the last file was.
        CHECK(dialog.directory().absolutePath() == QString::fromStdString(folder.path()));
        dialog.reject();
    }));
}

TEST_CASE("the name completed by its extension isn't replaced unasked") {
    const TemporaryFolder folder;
    folder.write("Gala 2.1.tessivo", "precious");
    const auto chosen = save("x.tessivo", [&](QFileDialog& dialog, QLineEdit& name) {
        dialog.setDirectory(QString::fromStdString(folder.path()));
        name.setText(QStringLiteral("Gala 2.1"));
        QTimer::singleShot(0, [&] {
            auto* question = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            REQUIRE(question != nullptr);
            question->reject();
            dialog.reject();
        });
        pressReturn(name);
    });
    CHECK_FALSE(chosen.has_value());
}
