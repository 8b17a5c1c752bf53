#include "ui/deskactions.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QDropEvent>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QUrl>

#include "app/VXLController.h"
#include "ui/NetworkViewWidget.h"

namespace ui {

void addFramingActions(QMenu* view, NetworkViewWidget* widget) {
  view->addSeparator();
  QAction* fit = view->addAction(QObject::tr("Fit &All"));
  fit->setObjectName(QStringLiteral("fitAllAction"));
  fit->setShortcuts({QKeySequence(Qt::Key_Home), QKeySequence(Qt::Key_F)});
  QObject::connect(fit, &QAction::triggered, widget, [widget] {
    widget->view().zoomToFit();
    widget->update();
  });
  QAction* frame = view->addAction(QObject::tr("Frame &Selection"));
  frame->setObjectName(QStringLiteral("frameSelectionAction"));
  frame->setShortcut(QKeySequence(Qt::SHIFT | Qt::Key_F));
  QObject::connect(frame, &QAction::triggered, widget, [widget] {
    widget->view().frameSelection();
    widget->update();
  });
}

void addLabelsMenu(QMenu* view, NetworkViewWidget* widget, VXLController& controller) {
  QMenu* labels = view->addMenu(QObject::tr("&Labels"));
  labels->setObjectName(QStringLiteral("labelsMenu"));
  auto* group = new QActionGroup(labels);
  group->setExclusive(true);
  struct Item {
    const char* text;
    const char* name;
    LabelMode mode;
  };
  const Item items[] = {{"&None", "labelsNoneAction", LabelMode::None},
                        {"&Selected", "labelsSelectedAction", LabelMode::Selected},
                        {"&All", "labelsAllAction", LabelMode::All}};
  for (const Item& item : items) {
    QAction* action = labels->addAction(QObject::tr(item.text));
    action->setObjectName(QString::fromLatin1(item.name));
    action->setCheckable(true);
    action->setData(static_cast<int>(item.mode));
    group->addAction(action);
    QObject::connect(action, &QAction::triggered, widget, [widget, &controller, mode = item.mode] {
      controller.setShowLabels(mode);
      widget->update();
    });
  }
  QObject::connect(labels, &QMenu::aboutToShow, labels, [labels, &controller] {
    for (QAction* action : labels->actions()) {
      action->setChecked(action->data().toInt() == static_cast<int>(controller.showLabels()));
    }
  });
}

FindBar::FindBar(NetworkViewWidget* widget, VXLController& controller, QWidget* parent)
    : QToolBar(tr("Find"), parent),
      widget_(widget),
      controller_(controller),
      field_(new QLineEdit(this)) {
  setObjectName(QStringLiteral("findBar"));
  setMovable(false);
  field_->setObjectName(QStringLiteral("findField"));
  field_->setPlaceholderText(tr("Find vertices by name or text property"));
  field_->setClearButtonEnabled(true);
  addWidget(field_);
  QAction* close = addAction(tr("Done"));
  connect(close, &QAction::triggered, this, [this] {
    hide();
    widget_->setFocus();
  });
  QAction* escape = new QAction(this);
  escape->setShortcut(QKeySequence(Qt::Key_Escape));
  escape->setShortcutContext(Qt::WidgetWithChildrenShortcut);
  addAction(escape);
  connect(escape, &QAction::triggered, close, &QAction::trigger);
  connect(field_, &QLineEdit::returnPressed, this, [this] { findNow(); });
  hide();
}

void FindBar::present() {
  show();
  field_->setFocus();
  field_->selectAll();
}

std::size_t FindBar::findNow() {
  VXLNetworkView& view = widget_->view();
  const std::vector<std::uint64_t> matches = view.findVertices(field_->text().toStdString());
  controller_.setSelectedVertices(matches);
  if (!matches.empty()) {
    view.frameSelection();
    view.updateVertexInfoWithVertex(matches.back());  // the details follow the last match
  }
  widget_->update();
  emit found(matches.size());
  return matches.size();
}

QMenu* addEditMenu(QMainWindow* window, NetworkViewWidget* widget, VXLController& controller,
                   FindBar* findBar, const std::function<void()>& selectionChanged) {
  QMenu* edit = window->menuBar()->addMenu(QObject::tr("&Edit"));
  edit->setObjectName(QStringLiteral("editMenu"));
  QAction* undo = edit->addAction(QObject::tr("&Undo"));
  undo->setObjectName(QStringLiteral("undoAction"));
  undo->setShortcuts(QKeySequence::Undo);
  QAction* redo = edit->addAction(QObject::tr("&Redo"));
  redo->setObjectName(QStringLiteral("redoAction"));
  redo->setShortcuts(
      {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), QKeySequence(Qt::CTRL | Qt::Key_Y)});
  for (auto [action, apply] :
       {std::pair{undo, &VXLController::undo}, std::pair{redo, &VXLController::redo}}) {
    QObject::connect(action, &QAction::triggered, widget,
                     [widget, &controller, apply, selectionChanged] {
                       (controller.*apply)();
                       widget->update();
                       if (selectionChanged) selectionChanged();
                     });
  }
  // Shown greyed when there is nothing to undo or redo; the shortcuts stay
  // live (they do nothing then).
  QObject::connect(edit, &QMenu::aboutToShow, edit, [undo, redo, &controller] {
    undo->setEnabled(controller.canUndo());
    redo->setEnabled(controller.canRedo());
  });
  QObject::connect(edit, &QMenu::aboutToHide, edit, [undo, redo] {
    undo->setEnabled(true);
    redo->setEnabled(true);
  });
  edit->addSeparator();
  QAction* find = edit->addAction(QObject::tr("&Find\u2026"));
  find->setObjectName(QStringLiteral("findAction"));
  find->setShortcuts(QKeySequence::Find);
  QObject::connect(find, &QAction::triggered, findBar, &FindBar::present);
  edit->addSeparator();
  struct Item {
    const char* text;
    const char* name;
    QKeySequence key;
    void (VXLNetworkView::*apply)();
  };
  const Item items[] = {
      {"Select &All", "selectAllAction", QKeySequence::SelectAll, &VXLNetworkView::selectAll},
      {"&Invert Selection", "invertSelectionAction", QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_I),
       &VXLNetworkView::invertSelection},
      {"Select &Neighbours", "selectNeighboursAction", QKeySequence(Qt::CTRL | Qt::Key_E),
       &VXLNetworkView::selectNeighbours},
  };
  for (const Item& item : items) {
    QAction* action = edit->addAction(QObject::tr(item.text));
    action->setObjectName(QString::fromLatin1(item.name));
    action->setShortcut(item.key);
    QObject::connect(action, &QAction::triggered, widget,
                     [widget, &controller, apply = item.apply, selectionChanged] {
                       controller.recordUndo(VXLController::UndoKind::Selection);
                       (widget->view().*apply)();
                       widget->update();
                       if (selectionChanged) selectionChanged();
                     });
  }
  return edit;
}

namespace {

// The menu items of `bar` with a shortcut, as "Menu › Item<TAB>keys" lines.
QString shortcutList(QMenuBar* bar) {
  QStringList lines;
  const std::function<void(QMenu*, const QString&)> walk = [&](QMenu* menu, const QString& path) {
    for (QAction* action : menu->actions()) {
      const QString text = action->text().remove(QLatin1Char('&'));
      if (action->menu()) {
        walk(action->menu(), path + text + QStringLiteral(" › "));
      } else if (!action->shortcuts().isEmpty()) {
        QStringList keys;
        for (const QKeySequence& key : action->shortcuts()) {
          keys << key.toString(QKeySequence::NativeText);
        }
        lines << path + text + QStringLiteral(":  ") + keys.join(QStringLiteral(", "));
      }
    }
  };
  for (QAction* top : bar->actions()) {
    if (top->menu())
      walk(top->menu(), top->text().remove(QLatin1Char('&')) + QStringLiteral(" › "));
  }
  return lines.join(QLatin1Char('\n'));
}

void showInformation(QWidget* parent, const QString& name, const QString& title,
                     const QString& text) {
  auto* box = new QMessageBox(QMessageBox::Information, title, text, QMessageBox::Close, parent);
  box->setObjectName(name);
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->open();
}

bool isNetworkFile(const QString& file) {
  static const QStringList kSuffixes = {"graphml", "xml", "net", "paj", "pajek"};
  return kSuffixes.contains(QFileInfo(file).suffix().toLower());
}

class DropTarget : public QObject {
 public:
  DropTarget(QMainWindow* window, std::function<void(const QString&)> open)
      : QObject(window), open_(std::move(open)) {}

 protected:
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (event->type() == QEvent::DragEnter || event->type() == QEvent::DragMove) {
      auto* drag = static_cast<QDropEvent*>(event);
      if (!files(drag->mimeData()).isEmpty()) drag->acceptProposedAction();
      return true;
    }
    if (event->type() == QEvent::Drop) {
      auto* drop = static_cast<QDropEvent*>(event);
      const QStringList dropped = files(drop->mimeData());
      if (dropped.isEmpty()) return false;
      drop->acceptProposedAction();
      for (const QString& file : dropped) open_(file);
      return true;
    }
    return false;
  }

 private:
  static QStringList files(const QMimeData* data) {
    QStringList found;
    if (!data || !data->hasUrls()) return found;
    for (const QUrl& url : data->urls()) {
      if (url.isLocalFile() && isNetworkFile(url.toLocalFile())) found << url.toLocalFile();
    }
    return found;
  }
  std::function<void(const QString&)> open_;
};

}  // namespace

void addWindowList(QMenu* windowMenu) {
  QObject::connect(windowMenu, &QMenu::aboutToShow, windowMenu, [windowMenu] {
    for (QAction* action : windowMenu->actions()) {
      if (action->property("windowListItem").toBool()) delete action;
    }
    QAction* separator = windowMenu->addSeparator();
    separator->setProperty("windowListItem", true);
    QWidget* active = QApplication::activeWindow();
    for (QWidget* widget : QApplication::topLevelWidgets()) {
      if (!widget->inherits("ui::DocumentWindow") || !widget->isVisible()) continue;
      QString title = widget->windowTitle();
      title.remove(QStringLiteral("[*]"));
      QAction* item = windowMenu->addAction(title);
      item->setProperty("windowListItem", true);
      item->setCheckable(true);
      item->setChecked(widget == active);
      QObject::connect(item, &QAction::triggered, widget, [widget] {
        widget->raise();
        widget->activateWindow();
      });
    }
  });
}

QMenu* addHelpMenu(QMainWindow* window) {
  QMenu* help = window->menuBar()->addMenu(QObject::tr("&Help"));
  QAction* keys = help->addAction(QObject::tr("&Keyboard Shortcuts"));
  keys->setObjectName(QStringLiteral("keyboardShortcutsAction"));
  keys->setShortcuts(QKeySequence::HelpContents);
  QObject::connect(keys, &QAction::triggered, window, [window] {
    showInformation(window, QStringLiteral("keyboardShortcutsDialog"),
                    QObject::tr("Keyboard Shortcuts"), shortcutList(window->menuBar()));
  });
  QAction* about = help->addAction(QObject::tr("&About Plexview"));
  about->setObjectName(QStringLiteral("aboutAction"));
  about->setMenuRole(QAction::AboutRole);
  QObject::connect(about, &QAction::triggered, window, [window] {
    showInformation(window, QStringLiteral("aboutDialog"), QObject::tr("About Plexview"),
                    QObject::tr("Plexview %1\n\nA viewer for complex networks: 3-D force-directed "
                                "layout, colouring, filtering and exports, scriptable in Python.")
                        .arg(QApplication::applicationVersion().isEmpty()
                                 ? QStringLiteral("0.1")
                                 : QApplication::applicationVersion()));
  });
  return help;
}

void acceptNetworkDrops(QMainWindow* window, std::function<void(const QString& file)> open) {
  window->setAcceptDrops(true);
  window->installEventFilter(new DropTarget(window, std::move(open)));
}

}  // namespace ui
