#pragma once

#include <QGuiApplication>
#include <QPointer>
#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

#include "display/Application.h"
#include "model/AppState.h"
#include "platform/simulated/SimulatedPlatform.h"

#include <utility>

namespace tessivo {

/// The whole screen on a simulated computer, with a window that really draws and takes keys.
class Screen {
public:
    explicit Screen(Show show) : state(computer) {
        engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
        setApplication(engine, application);
        engine.load(QUrl(QStringLiteral("qrc:/qt/qml/Tessivo/Ui/MainWindow.qml")));
        window = qobject_cast<QQuickWindow*>(engine.rootObjects().value(0));
        QVERIFY(window);
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window));
        click(QStringLiteral("Admin"));
        computer.time.advance(2.0);  // the check of the network, to a tick of the clock
        state.importShow(std::move(show));
        state.jumpTo(0);
        window->grabWindow();  // lays out
    }

    /// Every visible text of a window, in drawing order.
    static QStringList texts(const QQuickWindow* shown) {
        QStringList found;
        collect(shown->contentItem(), found);
        return found;
    }
    QStringList texts() const { return texts(window); }

    /// The visible item whose `text` or accessible name is `text`.
    QQuickItem* item(const QString& text) const { return find(window->contentItem(), text); }

    void click(const QString& text) const {
        QQuickItem* target = item(text);
        QVERIFY2(target, qPrintable(text));
        click(target);
    }

    /// The visible field with this placeholder.
    QQuickItem* field(const QString& placeholder) const {
        return find(window->contentItem(), placeholder, "placeholderText");
    }

    /// The visible button with this explanation.
    QQuickItem* button(const QString& tip) const { return find(window->contentItem(), tip, "tip"); }

    /// Clicks into the middle of an item.
    void click(QQuickItem* target) const {
        QVERIFY(target);
        const QPointF centre = target->mapToScene({target->width() / 2, target->height() / 2});
        QTest::mouseClick(window, Qt::LeftButton, {}, centre.toPoint());
    }

    /// Types into whatever has the keyboard, one key press per character.
    void type(const QString& text) const {
        for (const QChar character : text) {
            QTest::sendKeyEvent(QTest::Click, window, Qt::Key_unknown, QString(character), {});
        }
    }

    /// Every item below `item`, shown or not, also those that a Repeater made.
    static QList<QPointer<QQuickItem>> items(QQuickItem* item) {
        QList<QPointer<QQuickItem>> found{item};
        for (QQuickItem* child : item->childItems()) {
            found += items(child);
        }
        return found;
    }

    /// The stage window, opened as the operator does.
    QQuickWindow* openStage() const {
        click(QStringLiteral("Ouvrir l'affichage"));
        const auto find = [] {
            for (QWindow* shown : QGuiApplication::topLevelWindows()) {
                if (shown->isVisible() && shown->title() == QStringLiteral("Tessivo — Affichage")) {
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
    Application application{state, computer};
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
    static QQuickItem* find(QQuickItem* item, const QString& text, const char* property = "text") {
        if (!item->isVisible()) {
            return nullptr;
        }
        if (item->property(property).toString() == text) {
            return item;
        }
        for (QQuickItem* child : item->childItems()) {
            if (QQuickItem* found = find(child, text, property)) {
                return found;
            }
        }
        return nullptr;
    }
};

}  // namespace tessivo
