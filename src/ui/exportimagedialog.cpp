#include "ui/exportimagedialog.h"

#include <QCheckBox>
#include <QDir>
#include <QDoubleValidator>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QRegularExpression>
#include <QSpinBox>
#include <cstdio>

#include "render/VXLNetworkView.h"
#include "ui/NetworkViewWidget.h"
#include "ui/lastfolder.h"

namespace ui {
namespace {

constexpr int kLargestSide = 1000000;

QSpinBox* sizeField(int value, QWidget* parent) {
  auto* field = new QSpinBox(parent);
  field->setRange(1, kLargestSide);
  field->setValue(value);
  field->setSuffix(QObject::tr(" px"));
  return field;
}

}  // namespace

QString proposedExportName(const QString& displayName, const QString& suffix) {
  const QFileInfo name(displayName);
  const QString base = name.suffix().isEmpty() ? name.fileName() : name.completeBaseName();
  return base + QLatin1Char('.') + suffix;
}

ExportImageAccessory::ExportImageAccessory(VXLNetworkView& view, QSize viewPixels, QWidget* parent)
    : QWidget(parent), view_(view) {
  exportImageSizeCheck = new QCheckBox(tr("Custom size:"), this);
  exportImageWidthField = sizeField(std::max(viewPixels.width(), 1), this);
  exportImageHeightField = sizeField(std::max(viewPixels.height(), 1), this);
  char width[32];
  std::snprintf(width, sizeof width, "%.1f", static_cast<double>(view.lineWidth()));
  exportImageLineWidthField = new QLineEdit(QString::fromLatin1(width), this);
  exportImageLineWidthField->setValidator(new QDoubleValidator(0.0, 1000.0, 2, this));
  opaqueBackgroundCheck = new QCheckBox(tr("Opaque background"), this);
  opaqueBackgroundCheck->setChecked(!view.transparentBackground());

  auto* size = new QHBoxLayout;
  size->addWidget(exportImageSizeCheck);
  size->addWidget(exportImageWidthField);
  size->addWidget(new QLabel(QStringLiteral("x"), this));
  size->addWidget(exportImageHeightField);
  size->addStretch();
  auto* form = new QFormLayout(this);
  form->setContentsMargins(0, 0, 0, 0);
  form->addRow(size);
  form->addRow(tr("Line width:"), exportImageLineWidthField);
  form->addRow(opaqueBackgroundCheck);

  connect(exportImageSizeCheck, &QCheckBox::toggled, this,
          &ExportImageAccessory::exportImageCheckUpdated);
  connect(opaqueBackgroundCheck, &QCheckBox::toggled, this,
          &ExportImageAccessory::exportImageOpaqueCheckUpdated);
  exportImageCheckUpdated();
}

QSize ExportImageAccessory::imageSize() const {
  return {exportImageWidthField->value(), exportImageHeightField->value()};
}

float ExportImageAccessory::lineWidth() const {
  return exportImageLineWidthField->text().toFloat();
}

void ExportImageAccessory::exportImageCheckUpdated() {
  const bool custom = exportImageSizeCheck->isChecked();
  exportImageWidthField->setEnabled(custom);
  exportImageHeightField->setEnabled(custom);
}

void ExportImageAccessory::exportImageOpaqueCheckUpdated() {
  view_.setTransparentBackground(!opaqueBackgroundCheck->isChecked());
}

QFileDialog* openExportImageSheet(QWidget* window, NetworkViewWidget& host,
                                  const ExportSheetPlaces& places,
                                  std::function<void(const ExportReport&)> done,
                                  ExportSheetKind kind) {
  const bool vector = kind == ExportSheetKind::Vector;
  const QString title =
      vector ? QObject::tr("Export Vector Document") : QObject::tr("Export Image");
  auto* dialog = new QFileDialog(window, title);
  dialog->setOption(QFileDialog::DontUseNativeDialog, true);  // for the accessory
  dialog->setAcceptMode(QFileDialog::AcceptSave);
  dialog->setFileMode(QFileDialog::AnyFile);
  // The first pattern of each type is the suffix a typed name gets.
  const QStringList filters =
      vector
          ? QStringList{QObject::tr("PDF document (*.pdf)"), QObject::tr("SVG drawing (*.svg)"),
                        QObject::tr("Encapsulated PostScript (*.eps)"),
                        QObject::tr("PostScript (*.ps)")}
          : QStringList{QObject::tr("PNG image (*.png)"), QObject::tr("TIFF image (*.tiff *.tif)"),
                        QObject::tr("JPEG image (*.jpg *.jpeg)"), QObject::tr("GIF image (*.gif)"),
                        QObject::tr("BMP image (*.bmp)")};
  dialog->setNameFilters(filters);
  const auto suffixOf = [](const QString& filter) {
    const qsizetype star = filter.indexOf(QStringLiteral("*."));
    return filter.mid(star + 2).section(QRegularExpression(QStringLiteral("[ )]")), 0, 0);
  };
  dialog->setDefaultSuffix(suffixOf(filters.first()));
  QObject::connect(
      dialog, &QFileDialog::filterSelected, dialog, [dialog, suffixOf](const QString& filter) {
        const QString suffix = suffixOf(filter);
        dialog->setDefaultSuffix(suffix);
        // The name typed so far takes the type's suffix.
        auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        if (name && !name->text().isEmpty()) {
          name->setText(QFileInfo(name->text()).completeBaseName() + QLatin1Char('.') + suffix);
        }
      });
  dialog->setWindowModality(Qt::WindowModal);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  const QString folder =
      places.currentFolder.isEmpty() ? places.documentFolder : places.currentFolder;
  rememberFolder(dialog, folder);
  dialog->selectFile(proposedExportName(places.displayName, suffixOf(filters.first())));

  auto* accessory = new ExportImageAccessory(host.view(), host.pixelSize(), dialog);
  if (auto* grid = qobject_cast<QGridLayout*>(dialog->layout())) {
    grid->addWidget(accessory, grid->rowCount(), 0, 1, grid->columnCount());
  }

  QPointer<NetworkViewWidget> guarded(&host);
  QObject::connect(
      dialog, &QFileDialog::fileSelected, dialog,
      [guarded, accessory, window, title, done = std::move(done)](const QString& file) {
        if (!guarded) return;
        const QString path = QDir::cleanPath(QFileInfo(file).absoluteFilePath());
        const QSize size = accessory->imageSize();
        guarded->makeCurrent();
        const ExportReport report = guarded->view().exportImageToFile(
            path.toStdString(), size.width(), size.height(), accessory->lineWidth());
        guarded->doneCurrent();
        if (!report.written) {
          QMessageBox::warning(window, title,
                               QObject::tr("The image could not be exported.\n\n") +
                                   QString::fromStdString(report.error));
        }
        if (done) done(report);
      });
  dialog->open();
  return dialog;
}

}  // namespace ui
