"""Documents from Python without windows: a document controller made by the
script, opening native and Pajek files into documents, reopening autosaves left by a crash, and the
errors of bad files and failed saves."""

import os
import shutil
import unittest

import plexview

from support import ScratchFolderTestCase

DATA = os.path.join(os.environ.get("PLEXVIEW_TEST_DATA", ""), "documents")
Display = plexview.QLODocumentController.Display


def controller():
    shared = plexview.QLODocumentController.sharedDocumentController()
    return shared if shared is not None else plexview.QLODocumentController()


class Documents(ScratchFolderTestCase):
    def test_native_and_pajek_files_open_into_documents(self):
        documents = controller()
        before = len(documents.documents())
        native = documents.openDocumentWithContentsOfURL(
            os.path.join(DATA, "two-parts.graphml"), Display.DontShow
        )
        pajek = documents.openDocumentWithContentsOfURL(os.path.join(DATA, "two-parts.net"))
        self.assertEqual(len(documents.documents()), before + 2)
        self.assertEqual(documents.currentDocument().displayName(), "two-parts")

        self.assertEqual(native.networkToBeOppened().countVertices(), 6)

        saved = self.path("saved.graphml")
        pajek.saveToURL(saved)
        self.assertEqual(pajek.fileURL(), saved)
        back = plexview.openNetworkFile(saved)
        self.assertEqual((back.countVertices(), back.countEdges()), (5, 4))

    def test_bad_files_and_failed_saves_raise(self):
        documents = controller()
        broken = os.path.join(DATA, "broken.net")
        with self.assertRaises(plexview.ReadError) as raised:
            documents.openDocumentWithContentsOfURL(broken)
        self.assertEqual((raised.exception.file, raised.exception.line), (broken, 5))
        self.assertIn("outside", raised.exception.reason)

        document = documents.openDocumentWithContentsOfURL(os.path.join(DATA, "two-parts.net"))
        target = self.missing_folder_path("never.graphml")
        with self.assertRaises(OSError):
            document.saveToURL(target)
        self.assertFalse(os.path.exists(target))
        self.assertEqual(document.fileURL(), "")

    def test_an_autosave_left_by_a_crash_reopens_untitled(self):
        documents = controller()
        folder = plexview.QLOComplexNetwork.autosaveFolder()
        os.makedirs(folder, exist_ok=True)
        left = os.path.join(folder, "crashed.graphml")
        shutil.copy(os.path.join(DATA, "two-parts.graphml"), left)
        self.assertIn((left, "crashed"), documents.recoverableDocuments())

        # What a reopened autosave is, is checked by the C++ document tests.
        document = documents.reopenRecoveredDocument(left, Display.DontShow)
        self.assertEqual(document.displayName(), "crashed")


if __name__ == "__main__":
    unittest.main()
