#include <QApplication>
#include <QFont>
#include <QLibraryInfo>
#include <QLocale>
#include <QPalette>
#include <QQmlApplicationEngine>
#include <QQuickStyle>
#include <QStyleFactory>
#include <QTranslator>

#include "display/Application.h"
#include "model/AppState.h"
#include "platform/audio/PortAudioInput.h"
#include "platform/dnssd/LocalNetwork.h"
#include "platform/qt/DialogFilePanels.h"
#include "platform/qt/DiskFileStore.h"
#include "platform/qt/FilePreferencesStore.h"
#include "platform/qt/HttpUpdateFeed.h"
#include "platform/qt/QtMainQueue.h"
#include "platform/qt/SessionStayAwake.h"
#include "platform/qt/SystemClock.h"

#include <csignal>
#include <iostream>

namespace {

/// File panels and standard buttons in the screens' language and colours.
void dressStandardDialogs(QApplication& application, QTranslator& translator) {
    QLocale::setDefault(QLocale(QLocale::French));
    if (translator.load(QLocale(QLocale::French), QStringLiteral("qtbase"), QStringLiteral("_"),
                        QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QCoreApplication::installTranslator(&translator);
    }
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QPalette dark;
    const QColor paper(236, 230, 218);
    dark.setColor(QPalette::Window, QColor(19, 18, 17));
    dark.setColor(QPalette::Base, QColor(10, 9, 8));
    dark.setColor(QPalette::AlternateBase, QColor(28, 26, 24));
    dark.setColor(QPalette::Button, QColor(28, 26, 24));
    dark.setColor(QPalette::ToolTipBase, QColor(28, 26, 24));
    dark.setColor(QPalette::Highlight, QColor(92, 23, 20));
    for (const auto role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText,
          QPalette::HighlightedText, QPalette::BrightText}) {
        dark.setColor(role, paper);
    }
    dark.setColor(QPalette::PlaceholderText, QColor(90, 86, 79));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        dark.setColor(QPalette::Disabled, role, QColor(90, 86, 79));
    }
    application.setPalette(dark);
    application.setFont(QFont(QStringLiteral("Inter"), 10));
}

}  // namespace

int main(int argc, char* argv[]) {
#ifdef SIGPIPE
    // Standard output may be piped to a program that ends before this one.
    std::signal(SIGPIPE, SIG_IGN);
#endif
    QApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("tessivo"));
    QCoreApplication::setApplicationVersion(QStringLiteral("Beta " TESSIVO_VERSION));
    QTranslator translator;
    dressStandardDialogs(application, translator);
    QQuickStyle::setStyle(QStringLiteral("Basic"));

    tessivo::SystemClock clock;
    tessivo::QtMainQueue mainQueue;
    tessivo::FilePreferencesStore preferences(tessivo::FilePreferencesStore::defaultFolder());
    tessivo::DiskFileStore files;
    tessivo::DialogFilePanels panels;
    tessivo::PortAudioInput audio(
        (QCoreApplication::applicationDirPath() + QStringLiteral("/tessivo-audio-devices"))
            .toStdString());
    tessivo::HttpUpdateFeed updates(QUrl(QStringLiteral(TESSIVO_UPDATE_FEED)));
    tessivo::LocalNetwork network(mainQueue);
    tessivo::SessionStayAwake stayAwake;
    const tessivo::Platform platform{clock, mainQueue, preferences, files,     panels,
                                     audio, updates,   network,     stayAwake, std::cout};
    tessivo::AppState state(platform);
    tessivo::Application screens{state, platform};

    QQmlApplicationEngine engine;
    engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    tessivo::setApplication(engine, screens);
    engine.setInitialProperties({{QStringLiteral("keepsShows"), preferences.isWritable()}});
    engine.load(QUrl(QStringLiteral("qrc:/qt/qml/Tessivo/Ui/MainWindow.qml")));
    if (engine.rootObjects().isEmpty()) {
        return EXIT_FAILURE;
    }
    return QApplication::exec();
}
