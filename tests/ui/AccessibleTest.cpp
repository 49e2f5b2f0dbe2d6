#include <QAccessible>
#include <QQuickStyle>
#include <QSignalSpy>
#include <QTest>

#include "support/EveryScreen.h"

#include <memory>
#include <vector>

using namespace tessivo;

namespace {

/// Whether a person uses this item, by a click or with the keyboard.
bool isControl(const QQuickItem* item) {
    return item->isVisible() && item->isEnabled() && item->width() > 0 &&
           (item->activeFocusOnTab() || item->inherits("QQuickAbstractButton") ||
            item->inherits("QQuickTextInput") || item->inherits("QQuickComboBox"));
}

/// The controls of a window that an assistive tool doesn't find, can't call by a name in letters,
/// takes for no control, or can't tell from another.
QStringList unclearControls(QQuickWindow* window) {
    static const QRegularExpression letters(QStringLiteral("\\p{L}{2}"));
    QStringList unclear;
    QStringList told;
    for (const auto& item : Screen::items(window->contentItem())) {
        if (!isControl(item)) {
            continue;
        }
        QAccessibleInterface* control = QAccessible::queryAccessibleInterface(item);
        if (!control) {
            unclear.append(QStringLiteral("unknown ") + item->metaObject()->className());
            continue;
        }
        const QString name = control->text(QAccessible::Name);
        const QString whole = QStringLiteral("%1: %2 %3")
                                  .arg(name, control->text(QAccessible::Description),
                                       control->text(QAccessible::Value));
        const bool hasRole =
            control->role() != QAccessible::NoRole && control->role() != QAccessible::Client;
        if (!hasRole || !name.contains(letters) || told.contains(whole)) {
            unclear.append(whole + QStringLiteral(" ") + item->metaObject()->className());
        }
        told.append(whole);
    }
    return unclear;
}

/// The texts of a window that would take what a show, a workbook or an admin says for markup, and
/// so could be made to load a picture from anywhere.
QStringList markedUp(QQuickWindow* window) {
    QStringList texts;
    for (const auto& item : Screen::items(window->contentItem())) {
        if (item->inherits("QQuickText") && !item->inherits("QQuickPlaceholderText") &&
            item->property("textFormat").toInt() != Qt::PlainText) {
            texts.append(item->property("text").toString());
        }
    }
    return texts;
}

/// The controls and texts of these windows whose names change, of which an assistive tool is told.
class NameChanges {
public:
    explicit NameChanges(const std::vector<QQuickWindow*>& windows) {
        for (QQuickWindow* window : windows) {
            for (const auto& item : Screen::items(window->contentItem())) {
                for (QObject* attached : item->children()) {
                    if (attached->inherits("QQuickAccessibleAttached")) {
                        spies_.push_back(
                            std::make_unique<QSignalSpy>(attached, SIGNAL(nameChanged())));
                    }
                }
            }
        }
    }
    qsizetype count() const {
        qsizetype changes = 0;
        for (const auto& spy : spies_) {
            changes += spy->count();
        }
        return changes;
    }

private:
    std::vector<std::unique_ptr<QSignalSpy>> spies_;
};

}  // namespace

class AccessibleTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QQuickStyle::setStyle("Basic"); }
    void eachControlIsNamedAndNoTextIsMarkup();
    void runningDigitsAreRead();
    void switchesAreHeard();
};

void AccessibleTest::eachControlIsNamedAndNoTextIsMarkup() {
    visitEveryScreen([](const QString& state, QQuickWindow* window) {
        const QStringList unclear = unclearControls(window);
        QVERIFY2(unclear.isEmpty(), qPrintable(state + ":\n" + unclear.join("\n")));
        const QStringList marked = markedUp(window);
        QVERIFY2(state == "guide" || marked.isEmpty(),
                 qPrintable(state + ":\n" + marked.join("\n")));
    });
}

/// They aren't announced: an assistive tool that is told each second can speak of nothing else.
void AccessibleTest::runningDigitsAreRead() {
    Screen screen(concert());
    screen.click("Vue live");
    QQuickWindow* stage = screen.openStage();
    for (const Qt::Key size : {Qt::Key_F, Qt::Key_0}) {
        QTest::keyClick(stage, size, Qt::ControlModifier);
        stage->grabWindow();
        const NameChanges changes({screen.window, stage});
        screen.computer.time.advance(3.0);
        QCOMPARE(changes.count(), 0);
        screen.state.goNext();
        QCOMPARE_GT(changes.count(), 0);
        screen.state.goPrev();
    }
    for (const QQuickWindow* window : {screen.window, stage}) {
        const QAccessibleInterface* time =
            QAccessible::queryAccessibleInterface(Screen::find(window, "0:12"));
        QVERIFY(time);
        QCOMPARE(time->text(QAccessible::Name), "Temps restant");
        QCOMPARE(time->text(QAccessible::Description), "0:12");
    }
}

/// What an assistive tool switches, it switches in the state and not just on the screen.
void AccessibleTest::switchesAreHeard() {
    Screen screen(concert());
    screen.click("Vue live");
    const auto toggle = [&](const char* name, const QString& action) {
        QAccessibleInterface* control =
            QAccessible::queryAccessibleInterface(Screen::around(screen.item(name), "checkable"));
        QVERIFY(control->actionInterface()->actionNames().contains(action));
        control->actionInterface()->doAction(action);
    };
    const LtcManager& manager = screen.state.ltcManager();
    const bool wasFollowing = screen.state.autoAdvanceEnabled();
    for (const QString& action :
         {QAccessibleActionInterface::pressAction(), QAccessibleActionInterface::toggleAction()}) {
        toggle("Suivi prudent", action);
        toggle("Follow LTC", action);
        const bool isTurned = action == QAccessibleActionInterface::pressAction();
        QCOMPARE(manager.isCareful(), isTurned);
        QCOMPARE(screen.state.autoAdvanceEnabled(), wasFollowing != isTurned);
    }
}

QTEST_MAIN(AccessibleTest)
#include "AccessibleTest.moc"
