#pragma once
// What the document controller needs from the window layer: a window per
// document, the open panel, alerts and the progress shown while a large
// file is read.
class QLODocumentController;

namespace ui {

// Gives the document controller its windows, open panel, alerts, progress
// and recovery panel, and offers autosaves of an earlier run once the event
// loop runs.
void installDocumentUi(QLODocumentController& documents);

}  // namespace ui
