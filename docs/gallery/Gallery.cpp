// Photographs every screen in its states: `gallery FOLDER` writes one PNG each, for eyes to judge.
#include <QDir>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQmlComponent>
#include <QQuickItem>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QTest>

#include "import/ColumnLetters.h"
#include "kit/ScreenContext.h"
#include "ltc/LtcEncoder.h"
#include "platform/simulated/SimulatedPlatform.h"
#include "state/AppState.h"
#include "support/Random.h"
#include "support/WorkbookWriter.h"
#include "sync/AdminBroadcaster.h"
#include "timecode/LtcManager.h"
#include "ui/import/ShowImportViewModel.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <memory>
#include <string>

using namespace tessivo;

namespace {

// Of RootView.LaunchMode.
constexpr int noMode = 0;
constexpr int adminMode = 1;
constexpr int stationMode = 2;
// Of EditorView.EditorTab.
constexpr int setlistTab = 0;
constexpr int configTab = 1;
constexpr int liveTab = 2;

Guest guest(const char* name, const char* mic, const char* iem,
            std::optional<std::string> volume = std::nullopt) {
    return {Uuid::random(), name, mic, iem, std::move(volume)};
}

Song song(const char* title, int duration, const char* timecode, std::vector<Guest> guests) {
    Song made;
    made.title = title;
    made.duration = duration;
    made.ltcTimecode = timecode;
    made.guests = std::move(guests);
    return made;
}

Show typicalShow() {
    Show show;
    show.name = "Festival des Quais — vendredi";
    show.mics = {"HF 1", "HF 2", "HF 3", "HF 4", "Chœur G"};
    show.iems = {"Mix 1", "Mix 2", "Mix 3", "Générique", "Perso"};
    show.songs = {
        song("Ouverture", 95, "10:00:00:00", {}),
        song("Les lumières du port", 214, "10:02:00:00", {guest("Inès Caradec", "HF 1", "Mix 1")}),
        song("Nuit blanche", 187, "10:06:00:00",
             {guest("Inès Caradec", "HF 1", "Mix 1"),
              guest("Malik Ferrand", "HF 2", "Mix 2", "-3 dB")}),
        song("Carrousel", 240, "10:10:00:00",
             {guest("Chœur d'Arvel", "Chœur G", "Générique"), guest("", "HF 3", "Perso")}),
        song("Le train de 5 h 12", 201, "10:15:00:00",
             {guest("Basile Ndour", "HF 3", "Mix 3", "clic fort")}),
        song("À contre-jour", 233, "10:19:00:00", {guest("Soline Vasquez", "HF 2", "Mix 2")}),
        song("Silence radio", 178, "10:24:00:00", {}),
        song("La grande traversée", 305, "10:28:00:00",
             {guest("Inès Caradec", "HF 1", "Mix 1"),
              guest("Noé Castellane", "HF 4", "Perso", "sans réverbe")}),
    };
    return show;
}

/// A hundred songs of ten guests each, with the longest names.
Show crowdedShow() {
    Show show;
    show.name = "Le très grand concert de fin d'année de l'orchestre symphonique et de ses invités";
    for (int i = 0; i < 100; ++i) {
        Song& added = show.songs.emplace_back(
            song("Symphonie interminable en ut mineur pour voix, chœurs et machines, mouvement",
                 3605, "10:00:00:00", {}));
        added.title.append(" ").append(std::to_string(i + 1));
        for (int g = 0; g < 10; ++g) {
            added.guests.push_back(guest(
                g == 3 ? "Maximilienne-Apolline de La Rochefoucauld-Montbazon" : "Inès Caradec",
                "HF 12 (secours)", "Mix 12 stéréo",
                g % 2 ? std::optional("-12 dB") : std::nullopt));
        }
    }
    return show;
}

/// Headings over ten songs, some of whose lengths can't be read.
std::string runSheet(int columns) {
    std::string rows;
    for (int row = 1; row <= 11; ++row) {
        std::string cells;
        for (int column = 1; column <= columns; ++column) {
            const std::string number = std::to_string(row - 1);
            const std::string texts[] = {"Morceau " + number, "Inès + Malik",
                                         row % 3    ? "0:03:45"
                                         : row == 9 ? "3 min environ"
                                                    : "3 min 45",
                                         "10:0" + number + ":00:00"};
            const char* headings[] = {
                "Titre", "Avec qui sur scène, et sur quel micro si on le sait", "Durée", "TC"};
            const std::size_t kind = static_cast<std::size_t>(column - 1) % 4;
            if (column > 4 && column % 5 == 0) {
                continue;
            }
            cells += "<c r=\"" + columnLetter(column) + std::to_string(row) +
                     "\" t=\"inlineStr\"><is><t>" + (row == 1 ? headings[kind] : texts[kind]) +
                     "</t></is></c>";
        }
        rows += "<row r=\"" + std::to_string(row) + "\">" + cells + "</row>";
    }
    return rows;
}

class Gallery {
public:
    explicit Gallery(const QString& folder) : folder_(folder), state_(computer_) {
        QDir().mkpath(folder);
        engine_.addImportPath(QStringLiteral("qrc:/qt/qml"));
        setScreenContext(engine_, context_);
        engine_.load(QUrl(QStringLiteral("qrc:/qt/qml/Tessivo/Ui/shell/MainWindow.qml")));
        main_ = qobject_cast<QQuickWindow*>(engine_.rootObjects().value(0));
        QQmlComponent component(
            &engine_, QUrl(QStringLiteral("qrc:/qt/qml/Tessivo/Display/DisplayWindow.qml")));
        stage_.reset(qobject_cast<QQuickWindow*>(component.create()));
        stage_->show();
        QQmlComponent passages(
            &engine_, QUrl(QStringLiteral("qrc:/qt/qml/Tessivo/Display/PassagesWindow.qml")));
        passages_.reset(qobject_cast<QQuickWindow*>(passages.create()));
        passages_->show();
    }

    bool takeAll() {
        takeLaunchStates();
        takeListStates();
        takeImportStates();
        takeStageStates();
        takeZoomStates();
        takeEditorStates();
        takeLiveStates();
        takePassagesStates();
        takeGuideStates();
        return complete_;
    }

    /// A song change by timecode, second by second, for film.sh.
    bool takeFilm() {
        main_->setProperty("launchMode", adminMode);
        computer_.time.advance(AdminBroadcaster::checkDuration + 0.5);
        present(typicalShow(), 2);
        QTest::qWait(400);
        set("selectedTab", liveTab);
        computer_.audio.setDevices({{1, "Interface 2×2 USB", {48000.0, 2}}});
        state_.ltcManager().fetchInputDevices();
        state_.ltcManager().setSelectedDeviceId(1);
        state_.ltcManager().startCapturing();
        playSilence(180);
        for (int second = 0; second < 10; ++second) {
            const int clock = 9 * 60 + 54 + second;
            computer_.time.advance(1.0);
            playTimecode({10, clock / 60, clock % 60, 0});
            const std::string number = std::to_string(second);
            take(*main_, ("live-" + number).c_str(), {1180, 740});
            take(*stage_, ("stage-" + number).c_str(), {1180, 740});
        }
        return complete_;
    }

private:
    void takeLaunchStates() {
        const QSize size(1180, 820);
        take(*main_, "launch-choice", size);
        computer_.preferences.isFull = true;
        state_.setActiveShowId(std::nullopt);
        take(*main_, "launch-not-kept", size);
        computer_.preferences.isFull = false;
        state_.setActiveShowId(std::nullopt);
        takeResumeState();
        main_->setProperty("launchMode", stationMode);
        take(*main_, "station-searching", size);
        AdminBroadcaster other(computer_.network.addComputer("Console FOH"), computer_.time);
        other.startChecking();
        computer_.time.advance(2.0 * AdminBroadcaster::checkDuration);
        take(*main_, "station-waiting", size);
        other.update({typicalShow(), 2, computer_.time.now()});
        computer_.time.advance(1.0);
        take(*main_, "station-following", size);
        other.update({typicalShow(), 8, computer_.time.now()});
        computer_.time.advance(1.0);
        take(*main_, "station-finished", size);
        main_->setProperty("launchMode", adminMode);
        take(*main_, "admin-checking", size);
        computer_.time.advance(AdminBroadcaster::checkDuration);
        take(*main_, "admin-conflict", size);
        main_->setProperty("launchMode", noMode);
    }

    void takeResumeState() {
        present(typicalShow(), 6);
        context_.resumption.begin(true);
        computer_.time.advance(45.0);
        // What is kept then is what a crash would leave.
        const auto left = computer_.preferences.values;
        context_.resumption.leave();
        computer_.preferences.values = left;
        computer_.preferences.isFull = true;
        state_.setActiveShowId(std::nullopt);
        computer_.preferences.isFull = false;
        computer_.time.advance(2.0);
        main_->requestActivate();
        take(*main_, "launch-resume", {1180, 820});
        context_.resumption.dismiss();
        state_.deleteShow(state_.shows()[0].id);
        computer_.time.advance(1.0);
    }

    void takeListStates() {
        main_->setProperty("launchMode", adminMode);
        computer_.time.advance(AdminBroadcaster::checkDuration);
        take(*main_, "list-empty", {1180, 820});
        present(typicalShow(), 0);
        present(crowdedShow(), 0);
        Show empty;
        empty.name = "Filage";
        empty.mics.clear();
        present(std::move(empty), 0);
        state_.setActiveShowId(std::nullopt);
        take(*main_, "list-typical", {1180, 820});
        click("Nouveau show");
        take(*main_, "list-new-show", {1180, 820});
        QTest::keyClick(main_, Qt::Key_Escape);
        click("Supprimer ce show");
        take(*main_, "list-delete-show", {1180, 820});
        QTest::keyClick(main_, Qt::Key_Escape);
        click("Fichier");
        take(*main_, "menu-file", {1180, 820});
        QTest::keyClick(main_, Qt::Key_Escape);
        for (int i = 0; i < 30; ++i) {
            Show more = crowdedShow();
            more.id = Uuid::random();
            more.name.append(" ").append(std::to_string(i));
            present(std::move(more), 0);
        }
        computer_.updates.latestVersion = "9.9";
        state_.updater().checkForUpdateInformation();
        computer_.time.advance(1.0);
        state_.setActiveShowId(std::nullopt);
        take(*main_, "list-crowded", {1180, 820});
        take(*main_, "list-narrow", {720, 544});
    }

    void takeImportStates() {
        computer_.files.contents["/tableau.xlsx"] = "aucun";
        computer_.files.contents["/Festival.xlsx"] =
            test::WorkbookWriter({runSheet(4), runSheet(30), ""}).file();
        click("Importer un conducteur");
        take(*main_, "import-no-file", {1180, 820});
        pickFile("/tableau.xlsx");
        take(*main_, "import-error", {1180, 820});
        click("Fermer");
        click("Importer un conducteur");
        pickFile("/Festival.xlsx");
        auto* import = main_->findChild<ShowImportViewModel*>();
        take(*main_, "import-untouched", {1180, 820});
        const auto giveRoles = [&] {
            for (int column = 0; column < 4; ++column) {
                import->setRole(column, column + 1);
            }
            computer_.time.drain();
        };
        giveRoles();
        take(*main_, "import-typical", {1180, 820});
        main_->findChild<QQuickItem*>(QStringLiteral("importPreview"))->setProperty("unfolded", 1);
        import->acceptNotation(0, true);
        computer_.time.drain();
        take(*main_, "import-unread", {1180, 820});
        take(*main_, "import-narrow", {720, 544});
        import->selectSheet(1);
        computer_.time.drain();
        take(*main_, "import-many-columns", {1180, 820});
        import->selectSheet(2);
        computer_.time.drain();
        take(*main_, "import-empty-sheet", {1180, 820});
        import->selectSheet(0);
        giveRoles();
        click("Importer");
        computer_.time.drain();
        click("Déplier");
        take(*main_, "editor-imported", {1180, 820});
        state_.setActiveShowId(std::nullopt);
    }

    void pickFile(const char* location) {
        computer_.panels.answers = {location};
        main_->findChild<ShowImportViewModel*>()->pickFile();
        QCoreApplication::processEvents();
        computer_.time.drain();
    }

    void takeStageStates() {
        state_.setActiveDisplayShowId(std::nullopt);
        take(*stage_, "stage-waiting", {900, 560});
        Show empty;
        empty.name = "Répétition du jeudi";
        present(empty, 0);
        take(*stage_, "stage-empty-setlist", {900, 560});
        present(typicalShow(), 0);
        take(*stage_, "stage-first-song", {900, 560});
        state_.jumpTo(2);
        playSilence(42);
        take(*stage_, "stage-typical", {900, 560});
        take(*stage_, "stage-full-hd", {1920, 1080});
        take(*stage_, "stage-4k", {3840, 2160});
        playSilence(138);
        take(*stage_, "stage-urgent", {900, 560});
        state_.jumpTo(7);
        take(*stage_, "stage-last-song", {900, 560});
        state_.goNext();
        take(*stage_, "stage-finished", {900, 560});
        present(crowdedShow(), 42);
        take(*stage_, "stage-crowded", {1280, 800});
        take(*stage_, "stage-crowded-narrow", {900, 560});
    }

    /// Zoomed and fitted, from one guest to a dozen. Prints how large microphones are read.
    void takeZoomStates() {
        const struct {
            const char* name;
            QSize size;
        } screens[] = {{"720p", {1280, 720}}, {"full-hd", {1920, 1080}}, {"4k", {3840, 2160}}};
        stage_->requestActivate();
        QTest::qWait(100);
        for (const std::size_t guests : {0U, 1U, 3U, 8U, 12U}) {
            present(guestsShow(guests), 1);
            const std::string name = "stage-" + std::to_string(guests) + "-guests-";
            QTest::keyClick(stage_.get(), Qt::Key_0, Qt::ControlModifier);
            take(*stage_, (name + "normal").c_str(), screens[0].size);
            for (int i = 0; i < 8; ++i) {
                QTest::keyClick(stage_.get(), Qt::Key_Plus, Qt::ControlModifier);
            }
            take(*stage_, (name + "200").c_str(), screens[0].size);
            QTest::keyClick(stage_.get(), Qt::Key_F, Qt::ControlModifier);
            for (const auto& screen : screens) {
                take(*stage_, (name + "fit-" + screen.name).c_str(), screen.size);
                if (guests > 0) {
                    std::printf("%zu guests, %s: capitals of a microphone %.0f mm on 55 inches\n",
                                guests, screen.name, millimetresOfCapitals("HF 1"));
                }
            }
        }
        present(crowdedShow(), 42);
        take(*stage_, "stage-crowded-fit", {1920, 1080});
        Show longest = guestsShow(3);
        for (Song& named : longest.songs) {
            named.title += ", de la première lueur du soir jusqu'au bout du dernier rappel";
            for (Guest& singer : named.guests) {
                singer.name += " — " + singer.name + " et les solistes de la maîtrise";
            }
        }
        present(longest, 1);
        take(*stage_, "stage-long-names-fit", screens[0].size);
        QTest::keyClick(stage_.get(), Qt::Key_0, Qt::ControlModifier);
        take(*stage_, "stage-long-names", screens[0].size);
    }

    /// Of a capital in this text, were the stage's window a whole screen of 55 inches and 16 : 9.
    double millimetresOfCapitals(const char* text) const {
        const QQuickItem* item = find(stage_->contentItem(), QString::fromUtf8(text));
        const double screenHeight = 55 * 25.4 * 9 / std::hypot(16, 9);
        const double height = QFontMetricsF(item->property("font").value<QFont>()).capHeight();
        return item->mapRectToScene(QRectF(0, 0, 1, height)).height() / stage_->height() *
               screenHeight;
    }

    /// Three songs; the second has this many guests, of whom some write from right to left, and so
    /// has the third.
    static Show guestsShow(std::size_t count) {
        const char* names[] = {"Inès Caradec",
                               "Malik Ferrand",
                               "نادية منصور",
                               "Basile Ndour",
                               "Soline",
                               "Noé Castellane",
                               "Chœur d'Arvel",
                               "Yui Takahashi",
                               "דנה לוי",
                               "Maximilienne-Apolline de La Rochefoucauld",
                               "Jo",
                               "Ann-Kathrin Vogt"};
        Show show;
        show.name = "Grand soir";
        show.songs = {song("Ouverture", 95, "", {}), song("Les lumières du port", 235, "", {}),
                      song("La grande traversée de la nuit", 305, "", {})};
        for (std::size_t i = 0; i < count; ++i) {
            const std::string number = std::to_string(i + 1);
            for (const int at : {1, 2}) {
                show.songs[static_cast<std::size_t>(at)].guests.push_back(
                    guest(names[i], ("HF " + number).c_str(), ("Mix " + number).c_str(),
                          i == 2 ? std::optional("-3 dB") : std::nullopt));
            }
        }
        return show;
    }

    void takeEditorStates() {
        present(Show(), 0);
        take(*main_, "editor-empty", {1180, 820});
        const Show show = typicalShow();
        present(show, 0);
        take(*main_, "editor-typical", {1180, 820});
        set("expandedSongId", QString::fromStdString(show.songs[2].id.toText()));
        take(*main_, "editor-open-song", {1180, 820});
        take(*main_, "editor-open-song-narrow", {720, 544});
        set("draggingSongId", QString::fromStdString(show.songs[1].id.toText()));
        take(*main_, "editor-dragging", {1180, 820});
        set("draggingSongId", QString());
        state_.updateGuest(show.songs[2].id, show.songs[2].guests[1].id, std::nullopt, "HF 1",
                           std::nullopt);
        take(*main_, "editor-collision", {1180, 820});
        set("selectedTab", configTab);
        take(*main_, "editor-labels", {1180, 820});
        take(*main_, "editor-labels-narrow", {720, 544});
        set("selectedTab", setlistTab);
        const Show crowded = crowdedShow();
        present(crowded, 0);
        take(*main_, "editor-crowded", {1180, 820});
        set("expandedSongId", QString::fromStdString(crowded.songs[0].id.toText()));
        take(*main_, "editor-crowded-open-song", {1180, 820});
        take(*main_, "editor-crowded-narrow", {720, 544});
    }

    /// Sets a property of whatever shown item has it.
    void set(const char* property, const QVariant& value) const {
        if (!set(main_->contentItem(), property, value)) {
            std::fprintf(stderr, "gallery: nothing has %s\n", property);
        }
    }
    static bool set(QQuickItem* item, const char* property, const QVariant& value) {
        return item->property(property).isValid()
                   ? item->setProperty(property, value)
                   : std::ranges::any_of(item->childItems(), [&](QQuickItem* child) {
                         return set(child, property, value);
                     });
    }

    void takeLiveStates() {
        state_.setActiveShowId(std::nullopt);
        present(typicalShow(), 0);
        set("selectedTab", liveTab);
        take(*main_, "live-first-song", {1180, 820});
        click("Démarrer la capture");
        take(*main_, "live-no-input", {1180, 820});
        computer_.audio.setDevices(
            {{1, "Interface 2×2 USB", {48000.0, 2}}, {2, "Micro interne", {44100.0, 1}}});
        click("Actualiser la liste des entrées audio");
        computer_.time.drain();
        click("Choisir un périphérique…");
        take(*main_, "live-choosing-input", {1180, 820});
        click("Interface 2×2 USB");
        click("Démarrer la capture");
        state_.jumpTo(2);
        playSilence(42);
        playTimecode({10, 6, 42, 0});
        take(*main_, "live-typical", {1180, 820});
        take(*main_, "live-narrow", {720, 544});
        playSilence(138);
        playTimecode({10, 9, 0, 0});
        take(*main_, "live-announced", {1180, 820});
        takeLineStates();
        state_.jumpTo(8);
        take(*main_, "live-finished", {1180, 820});
        present(crowdedShow(), 42);
        take(*main_, "live-crowded", {1180, 820});
        take(*main_, "live-crowded-narrow", {720, 544});
    }

    void takePassagesStates() {
        state_.setActiveShowId(std::nullopt);
        take(*passages_, "passages-no-show", {1100, 700});
        Show show = typicalShow();
        show.songs[5].guests.push_back(guest("Basile Ndour", "HF 2", "Mix 3"));
        show.songs[6].guests.push_back(guest("Soline Vasquez", "Serre-tête", "Mix 2"));
        present(show, 3);
        take(*passages_, "passages-typical", {1100, 700});
        present(crowdedShow(), 42);
        take(*passages_, "passages-crowded", {1280, 800});
        take(*passages_, "passages-narrow", {480, 320});
        passages_->requestActivate();
        for (int i = 0; i < 4; ++i) {
            QTest::keyClick(passages_.get(), Qt::Key_Plus, Qt::ControlModifier);
        }
        take(*passages_, "passages-zoomed", {1280, 800});
    }

    void takeGuideStates() {
        QQmlComponent component(
            &engine_, QUrl(QStringLiteral("qrc:/qt/qml/Tessivo/Ui/guide/GuideWindow.qml")));
        const std::unique_ptr<QObject> made(component.create());
        auto* guide = qobject_cast<QQuickWindow*>(made.get());
        guide->show();
        take(*guide, "guide-first", {1100, 760});
        guide->setProperty("chapter", 5);
        take(*guide, "guide-timecode", {1100, 760});
        take(*guide, "guide-narrow", {640, 460});
    }

    void present(Show show, std::int64_t index) {
        state_.importShow(std::move(show));
        state_.setActiveDisplayShowId(state_.activeShowId());
        state_.jumpTo(index);
    }

    void takeLineStates() {
        playTimecode({10, 9, 1, 0}, "29.97df", 4);
        take(*main_, "live-line-counting", {1180, 820});
        click("Compter à 29,97 DF");
        click("Comment suivre le timecode");
        take(*main_, "live-line-menu", {1180, 820});
        QTest::keyClick(main_, Qt::Key_Escape);
        playTimecode({10, 9, 5, 0}, "29.97df", 8, 0.3F, 0.08F);
        take(*main_, "live-line-unsteady", {1180, 820});
        click("Activer le suivi prudent");
        playTimecode({10, 9, 15, 0}, "25", 12, 0.002F);
        take(*main_, "live-line-weak", {1180, 820});
        state_.ltcManager().setSelectedChannelIndex(1);
        playTimecode({10, 9, 30, 0});
        playSilence(3);
        playTimecode({10, 9, 31, 0});
        take(*main_, "live-line-channel", {1180, 820});
        click("Décoder le canal 1");
        playTimecode({10, 9, 15, 0}, "25", 10, 0.0F, 0.1F);
        take(*main_, "live-line-no-timecode", {1180, 820});
        take(*main_, "live-line-no-timecode-narrow", {720, 544});
        takeManyChannels();
    }

    void takeManyChannels() {
        LtcManager& manager = state_.ltcManager();
        computer_.audio.setDevices({{3, "Interface MADI 64", {48000.0, 64}}});
        manager.fetchInputDevices();
        computer_.time.drain();
        manager.stopCapturing();
        manager.setSelectedDeviceId(3);
        manager.setSelectedChannelIndex(41);
        manager.startCapturing();
        computer_.time.drain();
        levels_.resize(64);
        for (std::size_t i = 0; i < levels_.size(); ++i) {
            levels_[i] = 0.5F / static_cast<float>(1 + i * i * 37 % 251);
        }
        timecodeChannel_ = 41;
        playTimecode({10, 9, 40, 0}, "25", 12);
        take(*main_, "live-line-64-channels", {1180, 820});
        take(*main_, "live-line-64-channels-narrow", {720, 544});
    }

    void playSilence(int seconds) {
        for (int second = 0; second < seconds; ++second) {
            computer_.audio.deliver(std::vector(2, std::vector<float>(512)));
            computer_.time.advance(1.0);
        }
    }

    /// Some seconds of it with white noise, on the input that is captured.
    void playTimecode(ltc::Timecode timecode, std::string_view rateName = "25", int seconds = 1,
                      float gain = 1.0F, float noise = 0.0F) {
        const ltc::FrameRate rate = ltc::parseFrameRate(rateName).value();
        ltc::LtcEncoder encoder(rate, 48000);
        std::vector<float> signal;
        for (int i = 0; i < seconds * rate.counted; ++i) {
            encoder.appendFrame(timecode, signal);
            timecode = next(timecode, rate);
        }
        test::Random random(1);
        for (float& sample : signal) {
            sample = sample * gain + noise * random.gaussian();
        }
        for (std::size_t i = 0; i + 512 <= signal.size(); i += 512) {
            const auto block = signal.begin() + static_cast<std::ptrdiff_t>(i);
            std::vector<std::vector<float>> channels;
            for (const float level : levels_) {
                channels.emplace_back(512, level);
            }
            channels[timecodeChannel_].assign(block, block + 512);
            computer_.audio.deliver(channels);
            computer_.time.drain();
        }
    }

    /// Clicks on the first shown item that says this.
    void click(const char* text) const {
        const QQuickItem* item = nullptr;
        if (!QTest::qWaitFor(
                [&] { return (item = find(main_->contentItem(), QString::fromUtf8(text))); })) {
            std::fprintf(stderr, "gallery: nothing says %s\n", text);
            return;
        }
        main_->requestActivate();
        const QPointF centre = item->mapToScene({item->width() / 2, item->height() / 2});
        QTest::mouseClick(main_, Qt::LeftButton, {}, centre.toPoint());
        QTest::qWait(50);
        main_->grabWindow();  // lays out
    }
    static const QQuickItem* find(const QQuickItem* item, const QString& text) {
        if (!item->isVisible()) {
            return nullptr;
        }
        if (item->property("text") == text || item->property("tip") == text) {
            return item;
        }
        for (const QQuickItem* child : item->childItems()) {
            if (const QQuickItem* found = find(child, text)) {
                return found;
            }
        }
        return nullptr;
    }

    void take(QQuickWindow& window, const char* name, QSize size) {
        window.resize(size);
        QTest::qWait(400);  // animations end
        const QString path =
            folder_ + QLatin1Char('/') + QLatin1String(name) + QStringLiteral(".png");
        if (!window.grabWindow().save(path)) {
            std::fprintf(stderr, "gallery: cannot write %s\n", qPrintable(path));
            complete_ = false;
        }
    }

    QString folder_;
    SimulatedPlatform computer_;
    AppState state_;
    ScreenContext context_{state_, computer_};
    QQmlApplicationEngine engine_;
    QQuickWindow* main_ = nullptr;
    std::unique_ptr<QQuickWindow> stage_;
    std::unique_ptr<QQuickWindow> passages_;
    std::vector<float> levels_ = {0.0F, 0.0F};  ///< of the captured input's channels
    std::size_t timecodeChannel_ = 0;
    bool complete_ = true;
};

}  // namespace

int main(int argc, char* argv[]) {
    QGuiApplication application(argc, argv);
    QCoreApplication::setApplicationVersion(QStringLiteral("Beta 0.70"));
    const bool isFilm = argc == 3 && std::string_view(argv[2]) == "film";
    if (argc != 2 && !isFilm) {
        std::fprintf(stderr, "usage: gallery FOLDER [film]\n");
        return 2;
    }
    QQuickStyle::setStyle(QStringLiteral("Basic"));
    Gallery gallery(QString::fromLocal8Bit(argv[1]));
    return (isFilm ? gallery.takeFilm() : gallery.takeAll()) ? 0 : 1;
}
