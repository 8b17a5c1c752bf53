#pragma once
// The export sheet: a window-modal save dialog (Qt's own, so it can hold an
// accessory) with the picture's size, the edge line width and the opaque
// background choice, which exports the view when it ends with a file.
#include <QSize>
#include <QString>
#include <QWidget>
#include <functional>

#include "render/exportreport.h"

class QCheckBox;
class QFileDialog;
class QLineEdit;
class QSpinBox;
class VXLNetworkView;

namespace ui {

class NetworkViewWidget;

// The document's display name with its extension replaced by `suffix`
// ("karate.net" -> "karate.png", "Untitled" -> "Untitled.png").
QString proposedExportName(const QString& displayName, const QString& suffix = "png");

// A picture (PNG, TIFF, JPEG, GIF, BMP) or a vector document (PDF, SVG, EPS,
// PostScript): the sheet's title, file types and proposed name follow it.
enum class ExportSheetKind { Image, Vector };

// The size, line width and background controls below the file list.
class ExportImageAccessory : public QWidget {
  Q_OBJECT

 public:
  // Presets the size to `viewPixels` (fields disabled until the size box
  // is checked), the line width to the view's ("%.1f") and the opaque box
  // to the opposite of the view's transparentBackground.
  ExportImageAccessory(VXLNetworkView& view, QSize viewPixels, QWidget* parent = nullptr);

  // The width and height fields' values, whether enabled or not.
  QSize imageSize() const;
  float lineWidth() const;

  QCheckBox* exportImageSizeCheck = nullptr;
  QSpinBox* exportImageWidthField = nullptr;
  QSpinBox* exportImageHeightField = nullptr;
  QLineEdit* exportImageLineWidthField = nullptr;
  QCheckBox* opaqueBackgroundCheck = nullptr;

 public slots:
  // The size box enables or disables the size fields.
  void exportImageCheckUpdated();
  // The view's background becomes transparent exactly when the box is off.
  void exportImageOpaqueCheckUpdated();

 private:
  VXLNetworkView& view_;
};

struct ExportSheetPlaces {
  QString displayName;     // the document's display name
  QString currentFolder;   // the controller's current folder, or empty
  QString documentFolder;  // the folder of the document's file, or empty
};

// Opens the sheet over `window` for the view `host` shows. When it ends
// with a file, exports there (with the host's context current) at the
// chosen size and line width, shows a failure in an alert, and hands the
// report to `done` when given. The dialog deletes itself when closed.
QFileDialog* openExportImageSheet(QWidget* window, NetworkViewWidget& host,
                                  const ExportSheetPlaces& places,
                                  std::function<void(const ExportReport&)> done = {},
                                  ExportSheetKind kind = ExportSheetKind::Image);

}  // namespace ui
