#pragma once
// The 3D export sheet: a window-modal dialog over the document window with
// the colour properties offered for a web bundle (each with its transform
// function) and the network's vertex properties, the web viewer and web site
// options, and OK / Cancel. OK closes the sheet and asks where to write the
// bundle.
#include <QDialog>
#include <memory>

class QCheckBox;
class QPushButton;
class QTableView;
class VXLController;

namespace ui {

class Export3DTableModel;

class Export3DSheet : public QDialog {
  Q_OBJECT

 public:
  Export3DSheet(std::shared_ptr<VXLController> controller, QWidget* parent);

  // Shows the controller's export table as last reloaded, its selection
  // included, over the parent window.
  void present();

  QTableView* colorsTable() const { return colorsTable_; }
  QTableView* propertiesTable() const { return propertiesTable_; }
  QCheckBox* webViewer() const { return webViewer_; }
  QCheckBox* webSite() const { return webSite_; }
  QPushButton* okButton() const { return ok_; }
  QPushButton* cancelButton() const { return cancel_; }

 private:
  // The web site box is enabled exactly while the web viewer box is on.
  void export3DCheckUpdated();
  enum class Sender { OK, Cancel };
  void finishedExporting3D(Sender sender);
  QTableView* makeTable(Export3DTableModel* model, const char* name);
  void showSelection(QTableView* table);

  std::shared_ptr<VXLController> controller_;
  Export3DTableModel* colorsModel_ = nullptr;
  Export3DTableModel* propertiesModel_ = nullptr;
  QTableView* colorsTable_ = nullptr;
  QTableView* propertiesTable_ = nullptr;
  QCheckBox* webViewer_ = nullptr;
  QCheckBox* webSite_ = nullptr;
  QPushButton* ok_ = nullptr;
  QPushButton* cancel_ = nullptr;
};

// Asks, window-modal over `parent`, for the folder of a web bundle (the
// document's name proposed in the controller's current folder) and writes
// the bundle there with the export table's choices; an alert over `parent`
// tells which files could not be written.
void runWebBundleSavePanel(QWidget* parent, const std::shared_ptr<VXLController>& controller);

}  // namespace ui
