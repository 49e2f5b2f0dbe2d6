#pragma once

#include <QString>
#include <QtQml/qqmlregistration.h>

#include "kit/KeyedListModel.h"

#include <string>
#include <vector>

namespace tessivo {

/// One microphone or IEM label in its list.
class EditedLabel {
    Q_GADGET
    QML_VALUE_TYPE(editedLabel)
    Q_PROPERTY(QString text MEMBER text)

public:
    int row = 0;  ///< tells the rows of the model apart, as labels have no identity of their own
    QString text;

    int key() const { return row; }
    friend bool operator==(const EditedLabel&, const EditedLabel&) = default;
};

/// The labels of a show under edit; the role is `label`. Labels may repeat, so what happened is
/// told by position: rows before and after the change stay, and with them what is typed there.
class LabelListModel : public KeyedListModel<EditedLabel> {
    Q_OBJECT
    QML_ANONYMOUS

public:
    explicit LabelListModel(QObject* parent = nullptr) : KeyedListModel("label", parent) {}

    void present(const std::vector<std::string>& labels);

private:
    int lastRow_ = 0;
};

}  // namespace tessivo
