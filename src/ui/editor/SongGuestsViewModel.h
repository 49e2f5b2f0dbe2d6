#pragma once

#include <QString>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

#include "kit/ShowObserver.h"
#include "ui/editor/EditedSong.h"

namespace tessivo {

/// The guests of one song under edit, with the labels to choose from. The verbs go to the state,
/// which applies them to the active show.
class SongGuestsViewModel : public tessivo::ShowObserver {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString songId READ songId WRITE setSongId NOTIFY songIdChanged)
    /// Empty when the song is gone.
    Q_PROPERTY(tessivo::EditedGuestModel* guests READ guests CONSTANT)
    Q_PROPERTY(QStringList mics READ mics NOTIFY labelsChanged)
    Q_PROPERTY(QStringList iems READ iems NOTIFY labelsChanged)

public:
    explicit SongGuestsViewModel(QObject* parent = nullptr) : ShowObserver(parent) {}

    const QString& songId() const { return songId_; }
    void setSongId(const QString& songId);
    EditedGuestModel* guests() { return &guests_; }
    const QStringList& mics() const { return mics_; }
    const QStringList& iems() const { return iems_; }

    Q_INVOKABLE void add();
    Q_INVOKABLE void remove(const QString& guestId);
    Q_INVOKABLE void setName(const QString& guestId, const QString& name);
    Q_INVOKABLE void setMic(const QString& guestId, const QString& mic);
    Q_INVOKABLE void setIem(const QString& guestId, const QString& iem);
    /// Keeps the note without the blanks around it; none when nothing is left.
    Q_INVOKABLE void setVolume(const QString& guestId, const QString& typed);

Q_SIGNALS:
    void songIdChanged();
    void labelsChanged();

protected:
    void update(AppState::Field field) override;
    void present() override;

private:
    QString songId_;
    EditedGuestModel guests_;
    QStringList mics_;
    QStringList iems_;
};

}  // namespace tessivo
