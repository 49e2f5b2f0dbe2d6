#include "ui/shell/UndoViewModel.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>

#include "kit/ScreenContext.h"
#include "kit/ShownText.h"

#include <utility>

namespace tessivo {
namespace {

QString nameOf(const Edit* edit) {
    return edit ? toShownText(edit->name) : QString();
}

}  // namespace

UndoViewModel* UndoViewModel::create(QQmlEngine* engine, QJSEngine*) {
    return new UndoViewModel(screenContextOf(*engine).state);
}

UndoViewModel::UndoViewModel(AppState& state)
    : state_(state), subscription_(state.didChange.subscribe([this](AppState::Field field) {
          if (field == AppState::Field::shows) {
              Q_EMIT changed();
              updateRemoval();
          } else if (field == AppState::Field::nowTick) {
              updateRemoval();
          }
      })) {
    qGuiApp->installEventFilter(this);
}

QString UndoViewModel::undoable() const {
    return nameOf(state_.undoableEdit());
}

QString UndoViewModel::redoable() const {
    return nameOf(state_.redoableEdit());
}

void UndoViewModel::updateRemoval() {
    const Edit* offered = state_.offeredUndo();
    QString removal = offered ? toShownText(offered->removal) : QString();
    if (removal != removal_) {
        removal_ = std::move(removal);
        Q_EMIT removalChanged();
    }
}

bool UndoViewModel::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::ShortcutOverride) {
        return false;  // a window that is going has events, too, when it is none of Quick's any
                       // more
    }
    const auto* window = qobject_cast<QQuickWindow*>(watched);
    if (!window || !window->activeFocusItem()) {
        return false;
    }
    const auto& key = static_cast<const QKeyEvent&>(*event);
    const QVariant ownUndo = window->activeFocusItem()->property("ownUndo");
    const bool isKept = (key.matches(QKeySequence::Undo) || key.matches(QKeySequence::Redo)) &&
                        ownUndo.isValid() && !ownUndo.toBool();
    if (isKept) {
        event->ignore();
    }
    return isKept;
}

}  // namespace tessivo
