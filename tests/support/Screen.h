#pragma once

#include <QGuiApplication>
#include <QPointer>
#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QRegularExpression>
#include <QTest>

#include "kit/ScreenContext.h"
#include "platform/simulated/SimulatedPlatform.h"
#include "state/AppState.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace tessivo {

/// The whole screen of an admin on a simulated computer, with a window that really draws and takes
/// keys. Items are found by what a person reads.
class Screen {
public:
    /// Shows the list of these shows.
    explicit Screen(std::vector<Show> shows) : state(computer) {
        QTest::failOnWarning(QRegularExpression(QStringLiteral("qrc:|QML")));
        for (Show& show : shows) {
            state.importShow(std::move(show));
        }
        state.setActiveShowId(std::nullopt);
        engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
        setScreenContext(engine, application);
        engine.load(QUrl(QStringLiteral("qrc:/qt/qml/Tessivo/Ui/shell/MainWindow.qml")));
        window = qobject_cast<QQuickWindow*>(engine.rootObjects().value(0));
        QVERIFY(window);
        QVERIFY(QTest::qWaitForWindowActive(window));
        press(Qt::Key_Return);       // the keyboard is on "Admin"
        computer.time.advance(2.0);  // the check of the network, to a tick of the clock
        layOut();
    }

    /// Shows the editor of this show.
    explicit Screen(Show show) : Screen(std::vector<Show>()) {
        state.importShow(std::move(show));
        state.jumpTo(0);
        layOut();
    }

    void layOut() const { window->grabWindow(); }

    /// Every visible text of a window, in drawing order.
    static QStringList texts(const QQuickWindow* shown) {
        QStringList found;
        collect(shown->contentItem(), found);
        return found;
    }
    QStringList texts() const { return texts(window); }
    bool shows(const char* text) const { return item(text) != nullptr; }

    /// The first visible item with this text, explanation or placeholder; none when there is none.
    QQuickItem* item(const char* text) const { return find(window, text); }
    static QQuickItem* find(const QQuickWindow* shown, const char* text) {
        return find(shown->contentItem(), QString::fromUtf8(text));
    }

    void click(const char* text) const {
        QQuickItem* target = item(text);
        QVERIFY2(target, text);
        click(target);
    }

    /// Clicks into the middle of an item, and lays out what comes of it.
    void click(QQuickItem* target) const {
        QVERIFY(target);
        QTRY_VERIFY(!hasJustMoved(target));
        QTest::mouseClick(window, Qt::LeftButton, {}, centreOf(target));
        QCoreApplication::processEvents();  // a file panel opens on the next turn
        layOut();
    }

    /// Whether a click on this item would be taken for one on what was there a moment ago.
    bool hasJustMoved(const QQuickItem* target) const {
        return std::ranges::any_of(items(window->contentItem()), [&](const auto& guard) {
            return guard->property("aim").isValid() && guard->property("enabled").toBool() &&
                   guard->contains(guard->mapFromScene(centreOf(target)));
        });
    }

    static QPoint centreOf(const QQuickItem* item) {
        return item->mapToScene({item->width() / 2, item->height() / 2}).toPoint();
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const {
        QTest::keyClick(window, key, modifiers);
    }

    /// Types into whatever has the keyboard, one key press per character.
    void type(const char* text) const {
        for (const QChar character : QString::fromUtf8(text)) {
            QTest::sendKeyEvent(QTest::Click, window, Qt::Key_unknown, QString(character), {});
        }
    }

    /// The item with this property that `item` is or stands in.
    static QQuickItem* around(QQuickItem* item, const char* property) {
        while (item && !item->property(property).isValid()) {
            item = item->parentItem();
        }
        return item;
    }

    /// Every item below `item`, shown or not, also those that a Repeater made.
    static QList<QPointer<QQuickItem>> items(QQuickItem* item) {
        QList<QPointer<QQuickItem>> found{item};
        for (QQuickItem* child : item->childItems()) {
            found += items(child);
        }
        return found;
    }

    /// Whether a window has nothing more to make that isn't due yet.
    static bool isComplete(const QQuickWindow* shown) {
        return std::ranges::none_of(items(shown->contentItem()), [](const auto& item) {
            return item->property("due").isValid() && !item->property("active").toBool();
        });
    }

    /// The stage window, opened as the operator does.
    QQuickWindow* openStage() const {
        click("Ouvrir l'affichage");
        return windowTitled("Tessivo — Affichage");
    }

    /// A window that is about to show.
    static QQuickWindow* windowTitled(const char* title) {
        const auto find = [title] {
            for (QWindow* shown : QGuiApplication::topLevelWindows()) {
                if (shown->isVisible() && shown->title() == QString::fromUtf8(title)) {
                    return qobject_cast<QQuickWindow*>(shown);
                }
            }
            return static_cast<QQuickWindow*>(nullptr);
        };
        [&] { QTRY_VERIFY(find()); }();
        return find();
    }

    SimulatedPlatform computer;
    AppState state;
    ScreenContext application{state, computer};
    QQmlApplicationEngine engine;
    QQuickWindow* window = nullptr;

private:
    static void collect(const QQuickItem* item, QStringList& found) {
        if (!item->isVisible() || item->opacity() <= 0) {
            return;
        }
        if (item->inherits("QQuickText") && !item->property("text").toString().isEmpty()) {
            found.append(item->property("text").toString());
        }
        for (const QQuickItem* child : item->childItems()) {
            collect(child, found);
        }
    }
    static QQuickItem* find(QQuickItem* item, const QString& text) {
        if (!item->isVisible()) {
            return nullptr;
        }
        for (const char* property : {"text", "tip", "placeholderText"}) {
            if (item->property(property).toString() == text) {
                return item;
            }
        }
        for (QQuickItem* child : item->childItems()) {
            if (QQuickItem* found = find(child, text)) {
                return found;
            }
        }
        return nullptr;
    }
};

}  // namespace tessivo
