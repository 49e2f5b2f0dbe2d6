#include <QImage>
#include <QQuickStyle>
#include <QTest>

#include "support/Screen.h"
#include "support/Shows.h"
#include "sync/AdminBroadcaster.h"

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
        "Tessivo, la conduite.*",              // the footer: nothing that is needed
        "Setlist|Micros & IEM|Vue live",       // tabs: the chosen one is bright and underlined
        "Précédent|À suivre|LTC",              // captions: the place and what stands below
        "\\d+ morceaux? .*|Aucun morceau .*",  // counts: the list itself
        "Espace = suivant .*",                 // the keys: the guide
        "Aller à ce morceau →",                // the whole row is the button
        "(Ana|Noé|Léa) — .*",                  // of songs to come and past: the passages' window
        "MICRO|IEM|VOL",                       // over values that are bright
        "[✓·\\d]|Pas de guest|Morceau [12]",   // past songs and places on stage: fitted, they go
        "● En cours.*|0:\\d\\d",               // on the card's red: large, and bold
        "Choisis un fichier.*|Assure-toi.*",   // advice below a bright line
        "Fermer",                              // Escape does the same
        "Ouvrir l'affichage|Ajouter|Créer|Choisir un fichier…",  // white on red, 4.3
        "[\\x{E000}-\\x{F8FF}]",                                 // symbols, each with a tool tip
    };
    QStringList patterns;
    for (const char* text : texts) {
        patterns.append(QString::fromUtf8(text));
    }
    return patterns.join('|');
}()));

/// The texts of a window that are harder to read than 4.5 : 1, or 3 : 1 for large ones.
QStringList faintTexts(QQuickWindow* window) {
    const QImage picture = window->grabWindow();
    QStringList faint;
    for (const auto& item : Screen::items(window->contentItem())) {
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

Show concert() {
    Show show = showWithSongs(5);
    show.name = "Concert";
    show.songs[0].duration = 12;
    show.songs[0].ltcTimecode = "10:00:00:00";
    show.songs[0].guests.push_back({Uuid::random(), "Léa", "HF 2", "Mix 3", "-3"});
    show.songs[1].guests.push_back({Uuid::random(), "Noé", "HF 2", "Mix 3", ""});
    show.songs[2].guests.push_back({Uuid::random(), "Ana", "HF 9", "Mix 3", ""});
    return show;
}

}  // namespace

class ContrastTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QQuickStyle::setStyle("Basic"); }
    void textsCanBeRead();
};

void ContrastTest::textsCanBeRead() {
    const auto check = [](const QString& state, QQuickWindow* window) {
        const QStringList faint = faintTexts(window);
        QVERIFY2(faint.isEmpty(), qPrintable(state + (": " + faint.join(", "))));
    };
    Screen screen(concert());
    check("setlist", screen.window);
    screen.click("Micros & IEM");
    check("config", screen.window);
    screen.click("Vue live");
    check("live", screen.window);
    screen.state.jumpTo(2);
    check("live 2", screen.window);
    QQuickWindow* stage = screen.openStage();
    check("stage", stage);
    QTest::keyClick(stage, Qt::Key_F, Qt::ControlModifier);
    check("stage fit", stage);
    screen.state.jumpTo(0);
    screen.computer.time.advance(5);
    check("live urgent", screen.window);
    check("stage urgent fit", stage);
    QTest::keyClick(stage, Qt::Key_0, Qt::ControlModifier);
    check("stage urgent", stage);
    screen.state.jumpTo(5);
    check("live finished", screen.window);
    check("stage finished", stage);
    stage->close();
    screen.state.setActiveShowId(std::nullopt);
    screen.layOut();
    check("list", screen.window);
    screen.click("Nouveau show");
    check("new show", screen.window);
    QTest::keyClick(screen.window, Qt::Key_Escape);
    screen.click("Importer un conducteur");
    check("import", screen.window);
    QTest::keyClick(screen.window, Qt::Key_Escape);
    screen.window->setProperty("launchMode", 0);
    check("choice", screen.window);
    screen.window->setProperty("launchMode", 2);
    check("station", screen.window);
}

QTEST_MAIN(ContrastTest)
#include "ContrastTest.moc"
