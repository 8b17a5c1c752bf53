#include "ui/DocumentWindow.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QKeySequence>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSplitter>
#include <QStatusBar>
#include <QVariantAnimation>
#include <algorithm>
#include <string_view>
#include <variant>

#include "ui/NetworkViewWidget.h"
#include "ui/ScriptConsoleWindow.h"
#include "ui/SidePanel.h"
#include "ui/deskactions.h"
#include "ui/edgemenu.h"
#include "ui/export3dsheet.h"
#include "ui/exportimagedialog.h"
#include "ui/filepanels.h"
#include "ui/lastfolder.h"
#include "ui/multilevelstart.h"

namespace ui {

namespace {

constexpr int kSlideMilliseconds = 250;
// How often the window looks whether the layout is moving the vertices.
constexpr int kLayoutWatchMilliseconds = 500;

QString plural(std::uint64_t count, const char* one, const char* many) {
  return QString::number(count) + QLatin1Char(' ') + QLatin1String(count == 1 ? one : many);
}

QString toQString(const std::string& text) {
  return QString::fromStdString(text);
}

// The document's export actions; the name is what the document validates.
struct ExportItem {
  const char* text;
  const char* action;
  ExportResult (QLOComplexNetwork::*run)();
};
constexpr ExportItem kExportItems[] = {
    {"Image\u2026", "exportToImage", &QLOComplexNetwork::exportToPDF},
    {"PDF/SVG/EPS/PS\u2026", "exportToPDF", &QLOComplexNetwork::exportToPDF},
    {"Web Bundle\u2026", "exportToWebBundle", nullptr},
    {"3D Export\u2026", "exportTo3D", &QLOComplexNetwork::exportTo3D},
    {"Pajek\u2026", "exportNetworkToPajekFormat", &QLOComplexNetwork::exportNetworkToPajekFormat},
    {"Edge List\u2026", "exportNetworkToEdgesFormat",
     &QLOComplexNetwork::exportNetworkToEdgesFormat},
    {"GEXF\u2026", "exportNetworkToGexfFormat", &QLOComplexNetwork::exportNetworkToGexfFormat},
    {"GML\u2026", "exportNetworkToGmlFormat", &QLOComplexNetwork::exportNetworkToGmlFormat},
};
// The exports that work; the others stay off unless the document says
// otherwise.
// The exports built so far; the document may still turn any item on.
constexpr std::string_view kReadyExports[] = {"exportToImage",
                                              "exportToWebBundle",
                                              "exportTo3D",
                                              "exportNetworkToPajekFormat",
                                              "exportNetworkToEdgesFormat",
                                              "exportNetworkToGexfFormat",
                                              "exportNetworkToGmlFormat"};

}  // namespace

DocumentWindow::DocumentWindow(QLOComplexNetwork::Ptr document, QLODocumentController& documents,
                               QWidget* parent)
    : QMainWindow(parent), document_(std::move(document)), documents_(documents) {
  // The order matters: the controller knows its view and document before
  // the panel is made, the panel hears every refresh from the defaults on,
  // and the document installs what it read last.
  view_ = new NetworkViewWidget(nullptr);
  controller_ = VXLController::init(view_->sharedView());
  controller_->setDocument(document_.get());
  document_->setNetworkController(controller_.get());
  controller_->setFilePanel(filePanelRunner(this));
  controller_->setFileAlert(fileAlertRunner(this));
  panel_ = new SidePanel(controller_);
  controller_->setRefreshListener([this](VXLController::Panel which) {
    panel_->refresh(which);
    if (which == VXLController::Panel::NetworkInfo) updateCounts();
    document_->controllerDidRefresh(which);
  });

  panelScroll_ = new QScrollArea;
  panelScroll_->setWidget(panel_);
  panelScroll_->setWidgetResizable(true);
  splitter_ = new QSplitter(Qt::Horizontal, this);
  splitter_->addWidget(view_);
  splitter_->addWidget(panelScroll_);
  splitter_->setStretchFactor(0, 1);
  splitter_->setStretchFactor(1, 0);
  splitter_->setCollapsible(0, false);
  setCentralWidget(splitter_);
  counts_ = new QLabel(this);
  counts_->setObjectName(QStringLiteral("networkCounts"));
  statusBar()->addWidget(counts_);
  repulsion_ = new QLabel(this);
  repulsion_->setObjectName(QStringLiteral("windowRepulsionStatus"));
  statusBar()->addPermanentWidget(repulsion_);

  slide_ = new QVariantAnimation(this);
  slide_->setDuration(kSlideMilliseconds);
  slide_->setEasingCurve(QEasingCurve::InOutCubic);
  connect(slide_, &QVariantAnimation::valueChanged, this, [this](const QVariant& value) {
    const int panel = value.toInt();
    const QList<int> sizes = splitter_->sizes();
    const int total = sizes.value(0) + sizes.value(1);
    splitter_->setSizes({std::max(0, total - panel), panel});
  });

  buildMenus();
  controller_->setExport3DSheetHandler([this] { showExport3DSheet(); });
  controller_->setExportImageSheetHandler([this] { showExportImageSheet(ExportSheetKind::Image); });
  controller_->awakeFromNib();
  // A network opened with a layout of its own keeps it.
  const QLONetwork::Ptr opened = document_->networkToBeOppened();
  const bool openedWithLayout = opened && std::holds_alternative<std::shared_ptr<QLOVector3dArray>>(
                                              opened->propertyForKey("Position"));
  document_->windowControllerDidLoadNib();
  document_->setStateListener([this] { updateTitle(); });
  updateTitle();
  updateCounts();
  validateExportItems();

  // A large network gets the multilevel start once the window shows.
  if (const auto network = controller_->network();
      network && !openedWithLayout && network->countVertices() > kMultilevelOnOpenVertices &&
      multilevelStartOnOpen()) {
    QTimer::singleShot(0, this, [this] { runMultilevelStart(this, *controller_); });
  }

  layoutWatch_.setInterval(kLayoutWatchMilliseconds);
  connect(&layoutWatch_, &QTimer::timeout, this, [this] {
    const VXLNetworkView& view = view_->view();
    repulsion_->setText(QString::fromStdString(view.repulsionStatus()));
    if (view.fAnimate() && view.iterations() > 0 && view.network()) document_->noteLayoutRan();
  });
  layoutWatch_.start();

  // The panel opens wide enough for its controls beside a vertical scroll bar.
  panelWidth_ = std::max(panelWidth_, panel_->sizeHint().width() +
                                          panelScroll_->verticalScrollBar()->sizeHint().width() +
                                          2 * panelScroll_->frameWidth());
  panelScroll_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  panelScroll_->setMinimumWidth(panel_->minimumSizeHint().width());
  resize(1100 + panelWidth_ - 300, 720);
  splitter_->setSizes({width() - panelWidth_, panelWidth_});
  view_->setFocus();
}

DocumentWindow::~DocumentWindow() {
  shutDown();
}

DocumentWindow* DocumentWindow::windowFor(const QLOComplexNetwork* document) {
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    auto* window = qobject_cast<DocumentWindow*>(widget);
    if (window && window->document_.get() == document) return window;
  }
  return nullptr;
}

void DocumentWindow::buildMenus() {
  buildFileMenu();
  // Desk tools: the find bar and the Edit menu.
  findBar_ = new FindBar(view_, *controller_, this);
  addToolBar(Qt::TopToolBarArea, findBar_);
  addEditMenu(this, view_, *controller_, findBar_, [this] { selectionDidChange(); });
  connect(findBar_, &FindBar::found, this, [this](std::size_t count) {
    selectionDidChange();
    statusBar()->showMessage(plural(count, "vertex found", "vertices found"), 5000);
  });
  // The vector item opens the sheet for vector documents (the document's
  // export action opens the picture sheet).
  for (QAction* action : exportMenu_->actions()) {
    if (action->data().toString() != QStringLiteral("exportToPDF")) continue;
    disconnect(action, &QAction::triggered, this, nullptr);
    connect(action, &QAction::triggered, this,
            [this] { showExportImageSheet(ExportSheetKind::Vector); });
  }
  // A click's selection is undoable: the step holds the selection before it.
  connect(view_, &NetworkViewWidget::selectionClicked, this,
          [this](const std::vector<std::uint64_t>& before) {
            VXLNetworkView& view = view_->view();
            const std::vector<std::uint64_t> after = view.selectedIndices();
            view.setSelectedVertices(before);
            controller_->recordUndo(VXLController::UndoKind::Selection);
            view.setSelectedVertices(after);
            selectionDidChange();
          });
  // Shift+drag in the view adds the vertices in its box to the selection.
  connect(view_, &NetworkViewWidget::boxSelected, this,
          [this](const std::vector<std::uint64_t>& boxed) {
            std::vector<std::uint64_t> selection = view_->view().selectedIndices();
            selection.insert(selection.end(), boxed.begin(), boxed.end());
            controller_->setSelectedVertices(selection);
            selectionDidChange();
          });
  buildViewMenu();
  addMultilevelActions(menuBar()->addMenu(tr("&Layout")), this, *controller_);
  QMenu* window = menuBar()->addMenu(tr("&Window"));
  // Enabled when the program has an interpreter (and so a console).
  QAction* console =
      window->addAction(tr("Script Console"), this, [] { ScriptConsoleWindow::showShared(); });
  console->setEnabled(ScriptConsoleWindow::shared() != nullptr);
  addWindowList(window);
  addHelpMenu(this);
  acceptNetworkDrops(this, [this](const QString& file) {
    documents_.openDocumentInBackground(file.toStdString(), QLODocumentController::Display::Show);
  });
}

void DocumentWindow::buildFileMenu() {
  QMenu* file = menuBar()->addMenu(tr("&File"));
  QAction* newAction = file->addAction(tr("&New"), this, [this] { documents_.newDocument(); });
  newAction->setShortcuts(QKeySequence::New);
  QAction* open = file->addAction(tr("&Open\u2026"), this, [this] { documents_.openDocument(); });
  open->setShortcuts(QKeySequence::Open);
  recentMenu_ = file->addMenu(tr("Open &Recent"));
  connect(recentMenu_, &QMenu::aboutToShow, this, &DocumentWindow::fillRecentMenu);
  fillRecentMenu();
  file->addSeparator();
  file->addAction(tr("&Close"), this, &QWidget::close)->setShortcuts(QKeySequence::Close);
  file->addAction(tr("&Save"), this, &DocumentWindow::save)->setShortcuts(QKeySequence::Save);
  file->addAction(tr("Save &As\u2026"), this, &DocumentWindow::saveAs)
      ->setShortcuts(QKeySequence::SaveAs);
  file->addSeparator();
  buildExportMenu(file);
  file->addAction(tr("Import Positions\u2026"), this,
                  [this] { controller_->openPositionsFromPanel(); });
  file->addAction(tr("Export Positions\u2026"), this,
                  [this] { controller_->exportNodesPositions(); });
  // Colour files arrive with their reader.
  // The colour panel's own open button runs the colour file dialog.
  file->addAction(tr("Open Colour File\u2026"), this, [this] {
    if (auto* button = panel_->findChild<QAbstractButton*>(QStringLiteral("colorsOpenButton"))) {
      button->click();
    }
  });
  file->addSeparator();
  // Each window asks about its unsaved changes; one Cancel stops the quit.
  QAction* quit = file->addAction(tr("&Quit"), qApp, &QApplication::closeAllWindows);
  quit->setShortcuts(QKeySequence::Quit);
  quit->setMenuRole(QAction::QuitRole);
}

void DocumentWindow::buildExportMenu(QMenu* file) {
  exportMenu_ = file->addMenu(tr("&Export"));
  for (const ExportItem& item : kExportItems) {
    QAction* action = exportMenu_->addAction(tr(item.text));
    action->setData(QString::fromLatin1(item.action));
    if (std::string_view(item.action) == "exportToWebBundle") {
      connect(action, &QAction::triggered, this, &DocumentWindow::exportWebBundle);
    }
    if (!item.run) continue;
    connect(action, &QAction::triggered, this, [this, run = item.run] {
      const ExportResult result = ((*document_).*run)();
      if (!result.message.empty()) statusBar()->showMessage(toQString(result.message), 5000);
    });
  }
  connect(exportMenu_, &QMenu::aboutToShow, this, &DocumentWindow::validateExportItems);
}

void DocumentWindow::validateExportItems() {
  for (QAction* action : exportMenu_->actions()) {
    const std::string name = action->data().toString().toStdString();
    const bool ready = std::ranges::find(kReadyExports, name) != std::end(kReadyExports);
    action->setEnabled(document_->validateUserInterfaceItem(name, ready));
  }
}

void DocumentWindow::showExport3DSheet() {
  if (!export3DSheet_) export3DSheet_ = new Export3DSheet(controller_, this);
  export3DSheet_->present();
}

void DocumentWindow::showExportImageSheet(ExportSheetKind kind) {
  const QString folder = toQString(controller_->currentFolder().string());
  openExportImageSheet(
      this, *view_, {toQString(document_->displayName()), folder, folder},
      [this](const ExportReport& report) {
        if (report.written) {
          statusBar()->showMessage(tr("Exported %1").arg(toQString(report.path.string())), 5000);
        }
      },
      kind);
}

void DocumentWindow::exportWebBundle() {
  // What the 3D export sheet would export untouched: every offered colour
  // property, each with function 1.
  controller_->export3DTableController().reloadTable();
  runWebBundleSavePanel(this, controller_);
}

void DocumentWindow::buildViewMenu() {
  QMenu* menu = menuBar()->addMenu(tr("&View"));
  struct Preset {
    const char* text;
    Qt::Key key;
    void (VXLNetworkView::*apply)();
  };
  const Preset presets[] = {{"From &Top", Qt::Key_1, &VXLNetworkView::viewFromTop},
                            {"From &Left", Qt::Key_2, &VXLNetworkView::viewFromLeft},
                            {"From &Front", Qt::Key_3, &VXLNetworkView::viewFromFront}};
  for (const Preset& preset : presets) {
    QAction* action = menu->addAction(tr(preset.text));
    action->setShortcut(QKeySequence(Qt::CTRL | preset.key));
    connect(action, &QAction::triggered, this, [this, apply = preset.apply] {
      (view_->view().*apply)();
      view_->update();
    });
  }
  menu->addSeparator();
  addEdgeStyleItems(menu, controller_);
  menu->addSeparator();
  menu->addAction(view_->startPauseAction());
  menu->addSeparator();
  sidePanelAction_ = menu->addAction(tr("Show Side &Panel"));
  sidePanelAction_->setCheckable(true);
  sidePanelAction_->setChecked(sidePanelShown_);
  sidePanelAction_->setShortcut(QKeySequence(Qt::CTRL | Qt::ALT | Qt::Key_S));
  connect(sidePanelAction_, &QAction::triggered, this, &DocumentWindow::setSidePanelShown);
  addFramingActions(menu, view_);
  menu->addSeparator();
  addLabelsMenu(menu, view_, *controller_);
}

void DocumentWindow::selectionDidChange() {
  panel_->refresh(VXLController::Panel::NodesSelected);
}

void DocumentWindow::fillRecentMenu() {
  recentMenu_->clear();
  const auto recent = documents_.recentDocumentURLs();
  for (const auto& url : recent) {
    const QString path = toQString(url.string());
    QAction* action = recentMenu_->addAction(QFileInfo(path).fileName(), this, [this, url] {
      documents_.openDocumentInBackground(url, QLODocumentController::Display::Show);
    });
    action->setToolTip(path);
  }
  recentMenu_->addSeparator();
  QAction* clear =
      recentMenu_->addAction(tr("Clear Menu"), this, [this] { documents_.clearRecentDocuments(); });
  clear->setEnabled(!recent.empty());
}

void DocumentWindow::setSidePanelShown(bool shown) {
  sidePanelAction_->setChecked(shown);
  if (shown == sidePanelShown_) return;
  sidePanelShown_ = shown;
  const int current = splitter_->sizes().value(1);
  if (!shown && current > 0) panelWidth_ = current;
  slide_->stop();
  slide_->setStartValue(current);
  slide_->setEndValue(shown ? panelWidth_ : 0);
  slide_->start();
}

QString DocumentWindow::countsText() const {
  return counts_->text();
}

void DocumentWindow::updateCounts() {
  const auto network = controller_->network();
  const std::uint64_t vertices = network ? network->countVertices() : 0;
  const std::uint64_t edges = network ? network->countEdges() : 0;
  counts_->setText(plural(vertices, "vertex", "vertices") + QStringLiteral(", ") +
                   plural(edges, "edge", "edges"));
  repulsion_->setText(QString::fromStdString(view_->view().repulsionStatus()));
}

void DocumentWindow::updateTitle() {
  setWindowTitle(toQString(document_->displayName()) + QStringLiteral("[*]"));
  setWindowModified(document_->isDocumentEdited());
  const auto& file = document_->fileURL();
  setWindowFilePath(file.empty() ? QString() : toQString(file.string()));
}

bool DocumentWindow::save() {
  if (document_->fileURL().empty()) return saveAs();
  return saveTo(toQString(document_->fileURL().string()));
}

bool DocumentWindow::saveAs() {
  QFileDialog panel(this, tr("Save"));
  panel.setObjectName(QStringLiteral("savePanel"));
  panel.setOption(QFileDialog::DontUseNativeDialog);
  panel.setAcceptMode(QFileDialog::AcceptSave);
  panel.setNameFilter(QStringLiteral("GraphML (*.graphml)"));
  panel.setDefaultSuffix(QStringLiteral("graphml"));
  const auto& file = document_->fileURL();
  rememberFolder(&panel, file.empty() ? QString() : toQString(file.parent_path().string()));
  if (!file.empty()) {
    panel.selectFile(toQString(file.stem().string()) + QStringLiteral(".graphml"));
  } else {
    panel.selectFile(toQString(document_->displayName()) + QStringLiteral(".graphml"));
  }
  if (panel.exec() != QDialog::Accepted || panel.selectedFiles().isEmpty()) return false;
  return saveTo(panel.selectedFiles().first());
}

bool DocumentWindow::saveTo(const QString& file) {
  std::string reason;
  if (!document_->saveToURL(file.toStdString(), &reason)) {
    QMessageBox box(QMessageBox::Warning, tr("Plexview"),
                    tr("The document \u201C%1\u201D could not be saved.")
                        .arg(toQString(document_->displayName())),
                    QMessageBox::Ok, this);
    box.setInformativeText(toQString(reason));
    box.exec();
    return false;
  }
  documents_.noteNewRecentDocumentURL(file.toStdString());
  return true;
}

bool DocumentWindow::askToSaveChanges() {
  QMessageBox box(this);
  box.setObjectName(QStringLiteral("saveChangesQuestion"));
  box.setIcon(QMessageBox::Warning);
  box.setText(tr("Do you want to save the changes to \u201C%1\u201D?")
                  .arg(toQString(document_->displayName())));
  box.setInformativeText(tr("Your changes will be lost if you don't save them."));
  box.setStandardButtons(QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel);
  box.button(QMessageBox::Discard)->setText(tr("Don't Save"));
  box.setDefaultButton(QMessageBox::Save);
  switch (box.exec()) {
    case QMessageBox::Save:
      return save();
    case QMessageBox::Discard:
      return true;
    default:
      return false;
  }
}

void DocumentWindow::closeEvent(QCloseEvent* event) {
  if (!shutDown_ && document_->isDocumentEdited() && !askToSaveChanges()) {
    event->ignore();
    return;
  }
  shutDown();
  event->accept();
}

void DocumentWindow::changeEvent(QEvent* event) {
  if (event->type() == QEvent::ActivationChange && isActiveWindow()) {
    documents_.setCurrentDocument(document_.get());
  }
  QMainWindow::changeEvent(event);
}

void DocumentWindow::shutDown() {
  if (shutDown_) return;
  shutDown_ = true;
  layoutWatch_.stop();
  slide_->stop();
  // The document stops the controller, which pauses the layout and waits
  // for its batch; the controller outlives the window (scripts may still
  // find it), so it lets go of this window's panel and document here.
  document_->setStateListener(nullptr);
  document_->close();
  controller_->setRefreshListener(nullptr);
  controller_->setExport3DSheetHandler(nullptr);
  controller_->setExportImageSheetHandler(nullptr);
  controller_->setFilePanel(nullptr);
  controller_->setFileAlert(nullptr);
  controller_->setDocument(nullptr);
  document_->setNetworkController(nullptr);
}

}  // namespace ui
