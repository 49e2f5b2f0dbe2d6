#pragma once

#include <QObject>
#include <QString>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

#include "base/Signal.h"
#include "state/AppState.h"
#include "timecode/LtcManager.h"
#include "ui/live/InputDeviceListModel.h"

class QJSEngine;
class QQmlEngine;

namespace tessivo {

/// The timecode manager as the timecode panel reads it. What changes with each audio block reaches
/// the screen at most once per drawn frame, however many blocks arrive.
class TimecodeViewModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool isCapturing READ isCapturing NOTIFY isCapturingChanged)
    Q_PROPERTY(QString lastError READ lastError NOTIFY lastErrorChanged)
    /// Whether audio of this capture was dropped.
    Q_PROPERTY(bool hasLostAudio READ hasLostAudio NOTIFY hasLostAudioChanged)
    /// Whether only frames that confirm each other count.
    Q_PROPERTY(bool isCareful READ isCareful WRITE setCareful NOTIFY isCarefulChanged)
    Q_PROPERTY(bool isFetchingDevices READ isFetchingDevices NOTIFY isFetchingDevicesChanged)
    Q_PROPERTY(tessivo::InputDeviceListModel* devices READ devices CONSTANT)
    Q_PROPERTY(int selectedDeviceRow READ selectedDeviceRow NOTIFY selectedDeviceChanged)
    Q_PROPERTY(QString selectedDeviceName READ selectedDeviceName NOTIFY selectedDeviceChanged)
    Q_PROPERTY(QString currentTimecodeDisplay READ currentTimecodeDisplay NOTIFY timecodeChanged)
    Q_PROPERTY(int detectedFps READ detectedFps NOTIFY timecodeChanged)
    Q_PROPERTY(bool signalDetected READ signalDetected NOTIFY signalDetectedChanged)
    /// How much of the meter is filled, from 0 to 1, in steps that a screen can show.
    Q_PROPERTY(double meterFill READ meterFill NOTIFY meterChanged)
    Q_PROPERTY(bool hasLevel READ hasLevel NOTIFY meterChanged)

public:
    static TimecodeViewModel* create(QQmlEngine* engine, QJSEngine*);

    explicit TimecodeViewModel(LtcManager& manager);

    bool isCapturing() const { return manager_.isCapturing(); }
    QString lastError() const;
    bool hasLostAudio() const { return manager_.hasLostAudio(); }
    bool isCareful() const { return manager_.isCareful(); }
    void setCareful(bool careful) { manager_.setCareful(careful); }
    bool isFetchingDevices() const { return manager_.isFetchingInputDevices(); }
    InputDeviceListModel* devices() { return &devices_; }
    int selectedDeviceRow() const { return devices_.rowOf(manager_.selectedDeviceId()); }
    QString selectedDeviceName() const;
    QString currentTimecodeDisplay() const { return shown_.timecode; }
    int detectedFps() const { return shown_.fps; }
    bool signalDetected() const { return shown_.signal; }
    double meterFill() const { return shown_.meterFill; }
    bool hasLevel() const { return shown_.hasLevel; }

    Q_INVOKABLE void toggleCapture();
    /// Looks for devices; the list follows a little later.
    Q_INVOKABLE void refreshDevices();
    /// Selects the device of a row; a running capture goes on with it. The entry that asks to
    /// choose changes nothing.
    Q_INVOKABLE void chooseDevice(int row);

Q_SIGNALS:
    void isCapturingChanged();
    void lastErrorChanged();
    void hasLostAudioChanged();
    void isFetchingDevicesChanged();
    void isCarefulChanged();
    void selectedDeviceChanged();
    void timecodeChanged();
    void signalDetectedChanged();
    void meterChanged();

private:
    /// What the screen shows of the values that change with the audio.
    struct Shown {
        QString timecode;
        int fps = 0;
        bool signal = false;
        double meterFill = 0.0;
        bool hasLevel = false;
    };

    void update(LtcManager::Field field);
    Shown read() const;
    void show();

    LtcManager& manager_;
    Subscription subscription_;
    InputDeviceListModel devices_;
    Shown shown_;
    QTimer nextFrame_;
};

}  // namespace tessivo
