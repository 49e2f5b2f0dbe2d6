#pragma once

#include <QString>
#include <QtQml/qqmlregistration.h>

#include "base/Signal.h"
#include "base/Uuid.h"
#include "kit/KeyedListModel.h"
#include "state/AppState.h"

class QJSEngine;
class QQmlEngine;

namespace tessivo {

/// One show as its card tells it.
class ShowInfo {
    Q_GADGET
    QML_VALUE_TYPE(showInfo)
    Q_PROPERTY(QString id MEMBER id)
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(int songCount MEMBER songCount)
    Q_PROPERTY(int micCount MEMBER micCount)

public:
    ShowInfo() = default;
    explicit ShowInfo(const Show& show);

    QString id;
    QString name;
    int songCount = 0;
    int micCount = 0;

    const QString& key() const { return id; }
    friend bool operator==(const ShowInfo&, const ShowInfo&) = default;
};

/// All shows of this computer, in their order, and what the operator does with them; the role is
/// `show`.
class ShowListViewModel final : public KeyedListModel<ShowInfo> {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    static ShowListViewModel* create(QQmlEngine* engine, QJSEngine*);

    explicit ShowListViewModel(AppState& state);

    Q_INVOKABLE void open(const QString& id);
    Q_INVOKABLE void createShow(const QString& name);
    Q_INVOKABLE void deleteShow(const QString& id);

private:
    void present();

    AppState& state_;
    Subscription subscription_;
};

}  // namespace tessivo
