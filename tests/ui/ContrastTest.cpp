#include <QImage>
#include <QQuickStyle>
#include <QTest>

#include "support/EveryScreen.h"

#include <algorithm>
#include <cmath>
#include <map>

using namespace tessivo;

namespace {

/// Relative luminance of an opaque sRGB colour (WCAG 2.1).
double luminance(const QColor& color) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

/// 1 to 21 (WCAG 2.1).
double contrast(const QColor& one, const QColor& other) {
    const auto [dark, light] = std::minmax({luminance(one), luminance(other)});
    return (light + 0.05) / (dark + 0.05);
}

/// What a text is drawn on: the colour that most of its place has.
QColor groundOf(const QImage& picture, const QRect& place) {
    std::map<QRgb, int> counts;
    for (int y = place.top(); y <= place.bottom(); ++y) {
        for (int x = place.left(); x <= place.right(); ++x) {
            ++counts[picture.pixel(x, y)];
        }
    }
    return QColor(
        std::ranges::max_element(counts, {}, [](const auto& each) { return each.second; })->first);
}

/// `color` drawn with this opacity on `ground`.
QColor drawnOn(const QColor& ground, QColor color, double opacity) {
    const double part = color.alphaF() * opacity;
    const auto mix = [part](double over, double under) {
        return static_cast<float>(over * part + under * (1 - part));
    };
    return QColor::fromRgbF(mix(color.redF(), ground.redF()), mix(color.greenF(), ground.greenF()),
                            mix(color.blueF(), ground.blueF()));
}

double opacityOf(const QQuickItem* item) {
    return item == nullptr ? 1.0 : item->opacity() * opacityOf(item->parentItem());
}

/// Secondary texts that are meant to stand back, each with what tells the same legibly.
const QRegularExpression standsBack(QRegularExpression::anchoredPattern([] {
    const char* const texts[] = {
        "Tessivo, la conduite.*",                // the footer: nothing that is needed
        "Setlist|Micros & IEM|Vue live",         // tabs: the shown one is underlined
        "Précédent|À suivre|LTC",                // captions: what stands below
        "\\d+ morceaux? .*|Aucun morceau .*",    // counts: the list itself
        "Espace = suivant .*",                   // the keys: the guide
        "Aller à ce morceau →",                  // the whole row is the button
        "(Chœurs|Léa|—|\\(sans nom\\)) — .*",    // of other songs: the passages
        "MICRO|IEM|VOL",                         // over values that are bright
        "[✓·\\d]|Pas de guest.*|Morceau [12]",   // past songs, places: fitted, they go
        "● En cours.*|0:12",                     // on the red card, 3.1 and 4.4: bold
        "Choisis un fichier.*|Assure-toi.*",     // advice below a bright line
        "Fermer",                                // Escape does the same
        "Ouvrir l'affichage|Ajouter|Créer",      // white on red, 4.3: bold
        "Valider|Supprimer|Importer|Choisir.*",  // the same
        "Timecode LTC|Durée",                    // captions: the example below
        "Choisis d'abord.*",                     // what failed, in red, 4.4: bold
        "Feuille|Ligne des titres.*|À quoi.*",   // captions of the import
        "Première ligne.*|[A-Z]",                // the same
        "[\\x{E000}-\\x{F8FF}]",                 // symbols, each with a tool tip
    };
    QStringList patterns;
    for (const char* text : texts) {
        patterns.append(QString::fromUtf8(text));
    }
    return patterns.join('|');
}()));

/// What can be used of a window: its content, or the dialog or menu over it.
QQuickItem* frontOf(QQuickWindow* window) {
    for (QQuickItem* item = window->activeFocusItem(); item; item = item->parentItem()) {
        if (item->inherits("QQuickOverlay")) {
            return item;
        }
    }
    return window->contentItem();
}

/// The texts of a window that are harder to read than 4.5 : 1, or 3 : 1 for large ones.
QStringList faintTexts(QQuickWindow* window) {
    const QImage picture = window->grabWindow();
    QStringList faint;
    for (const auto& item : Screen::items(frontOf(window))) {
        const QString text = item->property("text").toString();
        const QRect place =
            item->mapRectToScene(QRectF(0, 0, item->width(), item->height())).toAlignedRect() &
            picture.rect();
        if (!item->inherits("QQuickText") || !item->isVisible() || !item->isEnabled() ||
            text.trimmed().isEmpty() || opacityOf(item) == 0 || place.isEmpty()) {
            continue;
        }
        const auto font = item->property("font").value<QFont>();
        const bool isLarge =
            font.pixelSize() >= 24 || (font.pixelSize() >= 19 && font.weight() >= QFont::Bold);
        const QColor ground = groundOf(picture, place);
        const double ratio = contrast(
            ground, drawnOn(ground, item->property("color").value<QColor>(), opacityOf(item)));
        if (ratio < (isLarge ? 3.0 : 4.5) && !standsBack.match(text).hasMatch()) {
            faint.append(QString::number(ratio, 'f', 1) + " " + text);
        }
    }
    return faint;
}

/// Where an item is drawn in the picture of its window.
QRect placeOf(const QQuickItem* item, const QImage& picture) {
    return item->mapRectToScene(QRectF(0, 0, item->width(), item->height())).toAlignedRect() &
           picture.rect();
}

/// The fields, choosers and switches of a window whose outline is less than 3 : 1 from what they
/// lie on. (A button is told by its words or its symbol.)
QStringList faintOutlines(QQuickWindow* window) {
    const QImage picture = window->grabWindow();
    QStringList faint;
    for (const auto& item : Screen::items(frontOf(window))) {
        const bool isSwitch = item->inherits("QQuickSwitch");
        const auto* drawn =
            item->property(isSwitch ? "indicator" : "background").value<QQuickItem*>();
        const bool isOutlined =
            isSwitch || item->inherits("QQuickComboBox") || item->property("boxed").toBool();
        if (!isOutlined || !item->isVisible() || !item->isEnabled() || opacityOf(item) < 1) {
            continue;
        }
        const QRect place = placeOf(drawn, picture);
        const QColor ground = picture.pixelColor(std::max(0, place.left() - 3), place.center().y());
        // Between two points of the picture, a line may be drawn on either.
        if (std::max(contrast(picture.pixelColor(place.left(), place.center().y()), ground),
                     contrast(picture.pixelColor(place.left() + 1, place.center().y()), ground)) <
            3) {
            faint.append(item->metaObject()->className());
        }
    }
    return faint;
}

/// How many points of `place` change by 3 : 1 from one picture to the other, in which the place has
/// moved by `shift`.
int pointsThatChange(const QImage& one, const QImage& other, const QRect& place, QPoint shift) {
    int count = 0;
    for (int y = place.top(); y <= place.bottom(); ++y) {
        for (int x = place.left(); x <= place.right(); ++x) {
            const QPoint there = QPoint(x, y) + shift;
            count += other.rect().contains(there) &&
                     contrast(one.pixelColor(x, y), other.pixelColor(there)) >= 3;
        }
    }
    return count;
}

/// The controls, as `key` leads through them, that hardly look different while they have the
/// keyboard: a frame of half their outline is the least.
QStringList faintFocus(QQuickWindow* window, Qt::Key key) {
    QStringList faint;
    QList<const QQuickItem*> seen;
    QTest::keyClick(window, key);
    const QQuickItem* focused = window->activeFocusItem();
    while (focused && !seen.contains(focused)) {
        seen.append(focused);
        const QImage with = window->grabWindow();
        const QRect place = placeOf(focused, with);
        const QPoint corner = focused->mapToScene({}).toPoint();
        QTest::keyClick(window, key);
        const QImage without = window->grabWindow();
        const QRect around = place.adjusted(-4, -4, 4, 4) & with.rect();
        const bool isScreen = focused->inherits("tessivo::KeyCaptureView");
        if (!isScreen && window->activeFocusItem() != focused &&
            pointsThatChange(with, without, around, focused->mapToScene({}).toPoint() - corner) <
                place.width() + place.height()) {
            faint.append(focused->metaObject()->className() + QStringLiteral(" ") +
                         focused->property("text").toString());
        }
        focused = window->activeFocusItem();
    }
    return faint;
}

}  // namespace

class ContrastTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QQuickStyle::setStyle("Basic"); }
    void whatMattersIsSeen();
};

void ContrastTest::whatMattersIsSeen() {
    visitEveryScreen([](const QString& state, QQuickWindow* window) {
        const Qt::Key key = state.contains("menu") ? Qt::Key_Down : Qt::Key_Tab;
        QStringList faint = faintTexts(window) + faintOutlines(window);
        faint += faintFocus(window, key);  // last: it scrolls
        QVERIFY2(faint.isEmpty(), qPrintable(state + (": " + faint.join(", "))));
    });
}

QTEST_MAIN(ContrastTest)
#include "ContrastTest.moc"
