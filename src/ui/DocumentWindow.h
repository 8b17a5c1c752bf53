#pragma once
// The window of one document: the network view and the side panel side by
// side in a splitter, the menus, the title with its modified marker, saving
// and the save-changes question on close.
#include <QMainWindow>
#include <QTimer>
#include <memory>

#include "app/QLOComplexNetwork.h"
#include "app/QLODocumentController.h"
#include "app/VXLController.h"

class QAction;
class QLabel;
class QMenu;
class QScrollArea;
class QSplitter;
class QVariantAnimation;

namespace ui {

class Export3DSheet;
enum class ExportSheetKind;
class FindBar;
class NetworkViewWidget;
class SidePanel;

class DocumentWindow : public QMainWindow {
  Q_OBJECT

 public:
  // Builds the window's controller for `document` and installs what the
  // document has read.
  DocumentWindow(QLOComplexNetwork::Ptr document, QLODocumentController& documents,
                 QWidget* parent = nullptr);
  ~DocumentWindow() override;

  // The open window of a document, or null.
  static DocumentWindow* windowFor(const QLOComplexNetwork* document);

  const QLOComplexNetwork::Ptr& document() const { return document_; }
  VXLController& controller() const { return *controller_; }
  NetworkViewWidget* networkView() const { return view_; }
  SidePanel* sidePanel() const { return panel_; }
  QSplitter* splitter() const { return splitter_; }
  bool isSidePanelShown() const { return sidePanelShown_; }
  // The status bar's counts, e.g. "2000 vertices, 3987 edges".
  QString countsText() const;

 public slots:
  // Slides the side panel in or out.
  void setSidePanelShown(bool shown);
  // Saves in place, or asks where when the document is untitled.
  bool save();
  bool saveAs();

 protected:
  void closeEvent(QCloseEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void buildMenus();
  void buildFileMenu();
  void buildExportMenu(QMenu* file);
  void buildViewMenu();
  void fillRecentMenu();
  void validateExportItems();
  // File > Export > 3D Export... (through the document and the controller)
  // and Web Bundle... (straight to the folder, with the sheet's defaults).
  void showExport3DSheet();
  void showExportImageSheet(ExportSheetKind kind);
  void exportWebBundle();
  void updateTitle();
  void updateCounts();
  // The view's selection changed from a menu or the find bar.
  void selectionDidChange();
  bool saveTo(const QString& file);
  // Save, Don't Save or Cancel: true when the window may close.
  bool askToSaveChanges();
  // Stops the layout and lets go of the controller before the view goes.
  void shutDown();

  QLOComplexNetwork::Ptr document_;
  QLODocumentController& documents_;
  VXLController::Ptr controller_;
  NetworkViewWidget* view_ = nullptr;
  SidePanel* panel_ = nullptr;
  QScrollArea* panelScroll_ = nullptr;
  QSplitter* splitter_ = nullptr;
  QLabel* counts_ = nullptr;
  QLabel* repulsion_ = nullptr;  // which repulsion the layout uses
  QMenu* recentMenu_ = nullptr;
  QMenu* exportMenu_ = nullptr;
  Export3DSheet* export3DSheet_ = nullptr;
  FindBar* findBar_ = nullptr;
  QAction* sidePanelAction_ = nullptr;
  QVariantAnimation* slide_ = nullptr;
  bool sidePanelShown_ = true;
  int panelWidth_ = 300;
  // Tells the document when the layout has been moving the vertices.
  QTimer layoutWatch_;
  bool shutDown_ = false;
};

}  // namespace ui
