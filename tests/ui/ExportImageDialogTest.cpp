// The image export sheet over a real view widget.
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QFileDialog>
#include <QImage>
#include <QLineEdit>
#include <QSpinBox>
#include <optional>

#include "../colour/scratch.h"
#include "application.h"
#include "plexora/QLORandomGenerator.h"
#include "ui/NetworkViewWidget.h"
#include "ui/exportimagedialog.h"

namespace {

using uitest::processEventsUntil;

class ExportSheetTest : public ::testing::Test {
 protected:
  void SetUp() override {
    uitest::ensureApplication();
    host_ = std::make_unique<ui::NetworkViewWidget>();
    QLORandomGenerator::sharedRandomGenerator().setSeed(11);
    widget().view().setNetwork(QLONetwork::initRandomNetworkWithNumberOfVertices(40, 4.0));
    widget().pause();
    widget().resize(240, 160);
    widget().show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&widget()));
    ASSERT_TRUE(processEventsUntil([&] { return widget().view().camera().viewWidth > 0; }));
  }

  // Opens the sheet, lets `choose` set it up, accepts it with `name` and
  // waits for the export.
  template <typename Choose>
  ExportReport exportWith(const std::string& name, Choose choose) {
    std::optional<ExportReport> report;
    QFileDialog* dialog =
        ui::openExportImageSheet(&widget(), widget(), {"net.graphml", folder_.path().c_str(), {}},
                                 [&](const ExportReport& r) { report = r; });
    auto* accessory = dialog->findChild<ui::ExportImageAccessory*>();
    EXPECT_NE(accessory, nullptr);
    if (!accessory) return {};
    choose(*dialog, *accessory);
    dialog->selectFile(QString::fromStdString((folder_.path() / name).string()));
    static_cast<QDialog*>(dialog)->accept();  // as the Save button does
    EXPECT_TRUE(processEventsUntil([&] { return report.has_value(); }));
    return report.value_or(ExportReport{});
  }

  std::unique_ptr<ui::NetworkViewWidget> host_;  // made once the application exists
  ui::NetworkViewWidget& widget() { return *host_; }
  ScratchFolder folder_;
};

TEST_F(ExportSheetTest, PresetsFollowTheView) {
  widget().view().setLineWidth(2.25f);
  exportWith("preset.png", [&](QFileDialog& dialog, ui::ExportImageAccessory& accessory) {
    EXPECT_TRUE(dialog.selectedFiles().value(0).endsWith("/net.png"));
    EXPECT_EQ(dialog.directory().absolutePath().toStdString(), folder_.path().string());
    EXPECT_EQ(accessory.imageSize(), widget().pixelSize());
    EXPECT_FALSE(accessory.exportImageWidthField->isEnabled());
    EXPECT_EQ(accessory.exportImageLineWidthField->text(), "2.2");  // "%.1f"
    accessory.opaqueBackgroundCheck->setChecked(false);
    EXPECT_TRUE(widget().view().transparentBackground());
  });
}

TEST_F(ExportSheetTest, ExportsAtTheChosenSizeOrTheFrameOnScreen) {
  const ExportReport chosen =
      exportWith("chosen.png", [](QFileDialog&, ui::ExportImageAccessory& accessory) {
        accessory.exportImageSizeCheck->setChecked(true);
        accessory.exportImageWidthField->setValue(300);
        accessory.exportImageHeightField->setValue(100);
      });
  ASSERT_TRUE(chosen.written) << chosen.error;
  EXPECT_EQ(QImage(QString::fromStdString(chosen.path.string())).size(), QSize(300, 100));
  EXPECT_EQ(chosen.tiles, 1);

  const ExportReport own = exportWith("own.png", [](QFileDialog&, ui::ExportImageAccessory&) {});
  ASSERT_TRUE(own.written) << own.error;
  EXPECT_EQ(own.tiles, 0);
  const QImage screen(QString::fromStdString(own.path.string()));
  ASSERT_EQ(screen.size(), widget().pixelSize());
  EXPECT_GT(uitest::countPixels(screen, [](QRgb p) { return p != qRgb(255, 255, 255); }),
            100);  // the network, not an empty buffer
}

}  // namespace
