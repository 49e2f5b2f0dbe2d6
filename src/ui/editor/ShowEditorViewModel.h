#pragma once

#include <QString>
#include <QtQml/qqmlregistration.h>

#include "kit/ShowObserver.h"
#include "ui/editor/EditedSong.h"
#include "ui/editor/LabelListModel.h"

namespace tessivo {

/// One show as the operator prepares it: its setlist and its labels. The verbs edit the active show
/// at once. Song ids are texts here; "typed" is what stands in a field, before the rules that make
/// a stored value of it.
class ShowEditorViewModel : public tessivo::ShowObserver {
    Q_OBJECT
    QML_ELEMENT
    /// Empty when the show is gone.
    Q_PROPERTY(QString name READ name NOTIFY nameChanged)
    Q_PROPERTY(tessivo::EditedSongModel* songs READ songs CONSTANT)
    Q_PROPERTY(tessivo::LabelListModel* mics READ mics CONSTANT)
    Q_PROPERTY(tessivo::LabelListModel* iems READ iems CONSTANT)

public:
    explicit ShowEditorViewModel(QObject* parent = nullptr) : ShowObserver(parent) {}

    const QString& name() const { return name_; }
    EditedSongModel* songs() { return &songs_; }
    LabelListModel* mics() { return &mics_; }
    LabelListModel* iems() { return &iems_; }

    Q_INVOKABLE void rename(const QString& name);

    /// False, and nothing is added, when only blanks were typed.
    Q_INVOKABLE bool addSong(const QString& typed);
    Q_INVOKABLE void removeSong(const QString& songId);
    /// Puts a song in the place of the one at `position`; the songs between close up.
    Q_INVOKABLE void moveSongTo(const QString& songId, int position);
    Q_INVOKABLE void setTitle(const QString& songId, const QString& title);
    Q_INVOKABLE void setTimecode(const QString& songId, const QString& typed);
    Q_INVOKABLE void setLength(const QString& songId, const QString& typed);

    /// False, and nothing is added, when only blanks were typed.
    Q_INVOKABLE bool addMic(const QString& typed);
    Q_INVOKABLE void removeMic(int position) { state().removeMic(position); }
    Q_INVOKABLE void updateMic(int position, const QString& label);
    Q_INVOKABLE bool addIem(const QString& typed);
    Q_INVOKABLE void removeIem(int position) { state().removeIem(position); }
    Q_INVOKABLE void updateIem(int position, const QString& label);

Q_SIGNALS:
    void nameChanged();

protected:
    void update(AppState::Field field) override;
    void present() override;

private:
    QString name_;
    EditedSongModel songs_;
    LabelListModel mics_;
    LabelListModel iems_;
};

}  // namespace tessivo
