#pragma once
// What the document controller needs from the window layer: a window per
// document, the open panel, alerts and the progress shown while a large
// file is read.
class QLODocumentController;

namespace ui {

void installDocumentUi(QLODocumentController& documents);

}  // namespace ui
