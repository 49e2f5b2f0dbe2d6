#pragma once

#include "support/Screen.h"
#include "support/Shows.h"
#include "support/WorkbookWriter.h"
#include "timecode/LtcManager.h"

#include <functional>

namespace tessivo {

/// Leads through the screens in their states, and has each looked at.
inline void visitEveryScreen(
    const std::function<void(const QString& state, QQuickWindow*)>& visit) {
    Screen screen(concert());
    const auto look = [&](const QString& state, QQuickWindow* window) {
        window->requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(window));
        QTRY_VERIFY(Screen::isComplete(window));
        window->grabWindow();  // lays out
        visit(state, window);
    };
    const auto escape = [&] {
        QTest::keyClick(screen.window, Qt::Key_Escape);
        QCoreApplication::processEvents();
    };
    screen.click("Déplier");
    look("setlist", screen.window);
    screen.click("Renommer le show");
    look("rename", screen.window);
    escape();
    screen.click("Micros & IEM");
    look("labels", screen.window);
    screen.click("Vue live");
    screen.click("Démarrer la capture");
    look("live, fault", screen.window);
    screen.computer.audio.setDevices({{7, "Interface", {48000.0, 2}}});
    screen.state.ltcManager().setSelectedDeviceId(7);
    screen.state.ltcManager().startCapturing();
    screen.computer.audio.deliver(std::vector(2, std::vector<float>(512)));
    screen.computer.time.drain();
    screen.state.jumpTo(2);
    look("live, captured", screen.window);
    screen.click("Comment suivre le timecode");
    screen.press(Qt::Key_Down);
    look("live, menu", screen.window);
    escape();
    screen.state.ltcManager().stopCapturing();

    QQuickWindow* stage = screen.openStage();
    look("stage", stage);
    QTest::keyClick(stage, Qt::Key_F, Qt::ControlModifier);
    look("stage, fitted", stage);
    screen.state.jumpTo(0);
    screen.computer.time.advance(5);
    look("live, urgent", screen.window);
    look("stage, urgent and fitted", stage);
    QTest::keyClick(stage, Qt::Key_0, Qt::ControlModifier);
    look("stage, urgent", stage);
    screen.window->requestActivate();
    screen.press(Qt::Key_P, Qt::ControlModifier);
    QQuickWindow* passages = Screen::windowTitled("Tessivo — Passages");
    look("passages", passages);
    passages->close();
    screen.window->requestActivate();
    QVERIFY(QTest::qWaitForWindowActive(screen.window));
    screen.press(Qt::Key_F1);
    QQuickWindow* guide = Screen::windowTitled("Tessivo — Guide");
    look("guide", guide);
    guide->close();
    screen.state.jumpTo(10);
    look("live, finished", screen.window);
    look("stage, finished", stage);
    stage->close();
    screen.state.setLocked(true);
    look("live, locked", screen.window);
    screen.state.setLocked(false);

    screen.state.setActiveShowId(std::nullopt);
    look("list", screen.window);
    screen.click("Fichier");
    look("menu", screen.window);
    escape();
    screen.click("Supprimer ce show");
    look("delete", screen.window);
    escape();
    screen.click("Nouveau show");
    look("new show", screen.window);
    escape();
    screen.click("Importer un conducteur");
    look("import", screen.window);
    screen.computer.files.contents["/Gala.xlsx"] =
        test::workbookOf(R"(<row r="1"><c r="A1" t="inlineStr"><is><t>Titre</t></is></c></row>)"
                         R"(<row r="2"><c r="A2" t="inlineStr"><is><t>Nuit</t></is></c></row>)");
    screen.computer.panels.answers = {"/Gala.xlsx"};
    screen.click("Choisir un fichier…");
    screen.computer.time.drain();
    look("import, columns", screen.window);
    screen.click("Fermer");
    screen.window->setProperty("launchMode", 0);
    look("choice", screen.window);
    screen.window->setProperty("launchMode", 2);
    look("station", screen.window);
}

}  // namespace tessivo
