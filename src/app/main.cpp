#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QFont>
#include <QIcon>
#include <QLibraryInfo>
#include <QLocale>
#include <QPalette>
#include <QQmlApplicationEngine>
#include <QQuickStyle>
#include <QStandardPaths>
#include <QStyleFactory>
#include <QTranslator>

#include "kit/ScreenContext.h"
#include "platform/audio/PortAudioInput.h"
#include "platform/network/LocalNetwork.h"
#include "platform/posix/FileJournal.h"
#include "platform/posix/FilePreferencesStore.h"
#include "platform/posix/ThreadBackground.h"
#include "platform/qt/DialogFilePanels.h"
#include "platform/qt/DiskFileStore.h"
#include "platform/qt/FileRequests.h"
#include "platform/qt/HttpUpdateFeed.h"
#include "platform/qt/QtMainQueue.h"
#include "platform/qt/SessionStayAwake.h"
#include "platform/qt/SystemClock.h"
#include "state/AppState.h"
#include "state/EveningJournal.h"
#include "style/Colors.h"

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

#include <csignal>
#include <iostream>
#include <system_error>

namespace {

/// File panels and standard buttons in the screens' language and colours.
void dressStandardDialogs(QApplication& application, QTranslator& translator) {
    QLocale::setDefault(QLocale(QLocale::French));
    if (translator.load(QLocale(QLocale::French), QStringLiteral("qtbase"), QStringLiteral("_"),
                        QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QCoreApplication::installTranslator(&translator);
    }
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    const tessivo::Colors colors;
    QPalette dark;
    dark.setColor(QPalette::Window, colors.pvBlack2);
    dark.setColor(QPalette::Base, colors.pvBlack);
    dark.setColor(QPalette::AlternateBase, colors.pvBlack3);
    dark.setColor(QPalette::Button, colors.pvBlack3);
    dark.setColor(QPalette::ToolTipBase, colors.pvBlack3);
    dark.setColor(QPalette::Highlight, colors.pvRedDim);
    for (const auto role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText,
          QPalette::HighlightedText, QPalette::BrightText}) {
        dark.setColor(role, colors.pvPaper);
    }
    dark.setColor(QPalette::PlaceholderText, colors.pvPaperFaint);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        dark.setColor(QPalette::Disabled, role, colors.pvPaperFaint);
    }
    application.setPalette(dark);
    application.setFont(QFont(QStringLiteral("Inter"), 10));
}

QIcon windowIcon() {
    QIcon icon;
    for (const int size : {16, 32, 48, 64, 128, 256}) {
        icon.addFile(QStringLiteral(":/icons/%1.png").arg(size));
    }
    return icon;
}

/// Of the state folder of the XDG base directories, which Qt 6.4 doesn't know.
std::string journalFolder() {
    QString state = qEnvironmentVariable("XDG_STATE_HOME");
    if (!QDir::isAbsolutePath(state)) {
        state = QDir::homePath() + QStringLiteral("/.local/state");
    }
    return state.toStdString() + "/tessivo/journal";
}

/// The whole path of the show file that the program is to open; empty for none.
QString namedFile(const QApplication& application) {
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("La conduite des shows en direct."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(QStringLiteral("fichier"),
                                 QStringLiteral("Un show (.tessivo) à ouvrir."),
                                 QStringLiteral("[fichier]"));
    parser.process(application);
    const QStringList files = parser.positionalArguments();
    return files.isEmpty() ? QString() : QFileInfo(files.first()).absoluteFilePath();
}

/// Whoever finds a fault in a program of the administrator has the whole computer.
void tellWhetherRoot() {
#ifdef Q_OS_UNIX
    if (geteuid() == 0) {
        std::cerr << "Tessivo n'a jamais besoin des droits d'administrateur : "
                     "lance-le sous ton propre compte.\n";
    }
#endif
}

/// The user's own: "tessivo" in the configuration folder.
std::string preferencesFolder() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation).toStdString() +
           "/tessivo";
}

}  // namespace

int main(int argc, char* argv[]) try {
#ifdef SIGPIPE
    // Standard output may be piped to a program that ends before this one.
    std::signal(SIGPIPE, SIG_IGN);
#endif
    tellWhetherRoot();
    QApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("tessivo"));
    QCoreApplication::setApplicationVersion(QStringLiteral("Beta " TESSIVO_VERSION));
    QTranslator translator;
    dressStandardDialogs(application, translator);
    QApplication::setWindowIcon(windowIcon());
    QGuiApplication::setDesktopFileName(QStringLiteral("tessivo"));
    QQuickStyle::setStyle(QStringLiteral("Basic"));
    const QString file = namedFile(application);
    if (!file.isEmpty() && tessivo::FileRequests::handOver(file)) {
        return EXIT_SUCCESS;
    }

    tessivo::SystemClock clock;
    tessivo::QtMainQueue mainQueue;
    tessivo::DiskFileStore files;
    tessivo::DialogFilePanels panels;
    tessivo::PortAudioInput audio(
        (QCoreApplication::applicationDirPath() + QStringLiteral("/tessivo-audio")).toStdString());
    tessivo::HttpUpdateFeed updates(QUrl(QStringLiteral(TESSIVO_UPDATE_FEED)));
    tessivo::LocalNetwork network(mainQueue);
    tessivo::SessionStayAwake stayAwake;
    tessivo::FileJournal journal(journalFolder(), std::cerr);
    tessivo::ThreadBackground background;
    // The last of them, so that it ends first: the next program may have the shows, however long
    // the others take to end.
    tessivo::FilePreferencesStore preferences(preferencesFolder());
    const tessivo::Platform platform{clock, mainQueue, background, preferences, files,     panels,
                                     audio, updates,   network,    stayAwake,   std::cout, journal};
    tessivo::AppState state(platform);
    const tessivo::EveningJournal evening(state, clock, journal);
    tessivo::ScreenContext screens{state, platform};

    QQmlApplicationEngine engine;
    engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    tessivo::setScreenContext(engine, screens);
    engine.load(QUrl(QStringLiteral("qrc:/qt/qml/Tessivo/Ui/shell/MainWindow.qml")));
    if (engine.rootObjects().isEmpty()) {
        return EXIT_FAILURE;
    }
    const tessivo::FileRequests requests(
        [&](const QString& path) { screens.fileRequested.emit(path.toStdString()); });
    if (!file.isEmpty()) {
        screens.fileRequested.emit(file.toStdString());
    }
    return QApplication::exec();
} catch (const std::system_error& error) {
    std::cerr << "Tessivo can't start: " << error.what() << '\n';
    return EXIT_FAILURE;
}
