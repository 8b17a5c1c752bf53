"""Documents from Python without windows: a document controller made by the
script, opening native and Pajek files into documents, saving, and the
errors of bad files and failed saves."""

import os
import tempfile
import unittest

# The document controller keeps its recent files with Qt's settings: they go
# to a scratch folder, not the user's own (read when first used).
os.environ["XDG_CONFIG_HOME"] = tempfile.mkdtemp(prefix="plexview-settings-")

import plexview  # noqa: E402

from support import ScratchFolderTestCase  # noqa: E402

DATA = os.path.join(os.environ.get("PLEXVIEW_TEST_DATA", ""), "documents")
Display = plexview.QLODocumentController.Display


def controller():
    shared = plexview.QLODocumentController.sharedDocumentController()
    return shared if shared is not None else plexview.QLODocumentController()


class Documents(ScratchFolderTestCase):
    def test_the_first_controller_made_is_the_shared_one(self):
        made = controller()
        self.assertIs(plexview.QLODocumentController.sharedDocumentController(), made)

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
        self.assertIsNone(native.networkController())  # no windows

        saved = self.path("saved.graphml")
        pajek.saveToURL(saved)
        self.assertEqual(pajek.fileURL(), saved)
        back = plexview.openNetworkFile(saved)
        self.assertEqual((back.countVertices(), back.countEdges()), (5, 4))

    def test_bad_files_and_failed_saves_raise(self):
        documents = controller()
        broken = os.path.join(DATA, "broken.net")
        count = len(documents.documents())
        with self.assertRaises(ValueError) as raised:
            documents.openDocumentWithContentsOfURL(broken)
        self.assertIn("broken.net", str(raised.exception))
        self.assertEqual(len(documents.documents()), count)

        with self.assertRaises(plexview.ReadError):
            plexview.openNetworkFile(broken)

        document = documents.openDocumentWithContentsOfURL(os.path.join(DATA, "two-parts.net"))
        target = self.missing_folder_path("never.graphml")
        with self.assertRaises(OSError):
            document.saveToURL(target)
        self.assertFalse(os.path.exists(target))
        self.assertEqual(document.fileURL(), "")


if __name__ == "__main__":
    unittest.main()
