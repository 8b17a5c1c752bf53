"""The plexview program's start-up script.

The program runs this file once, before its event loop opens the first
window. It defines what the program calls into later:

- PyInterpreter: the interpreter object behind the script console. It runs
  whole scripts and single lines in one namespace kept between runs and
  answers, as text, what they printed (output, errors and tracebacks).
- runScript(path): `plexview --run SCRIPT.py`, once the first window exists.
- renderFile(...): `plexview --render FILE -o OUT ...`, without a window.

Everything here is written on top of the plexview module, as a user's
script would be; the file can also be loaded with runpy next to the
extension module, which is how its tests use it.
"""

import code
import contextlib
import io
import linecache
import os
import sys
import traceback

import plexview

# This file's name as its code objects know it (the program removes
# __file__ from __main__ once the script has run).
_thisFile = __file__

try:
    import numpy
except ImportError:  # the console works without it; only `np` is missing
    numpy = None


# --- The namespace scripts see -------------------------------------------


def scriptNamespace(name="__console__"):
    """A fresh namespace for a script: the plexview module, its classes and
    functions by their own names (VXLController, QLODocumentController,
    QLONetwork, QLOVector3dArray, ...) and numpy as np."""
    namespace = {"__name__": name, "__builtins__": __builtins__, "plexview": plexview}
    for key in dir(plexview):
        if not key.startswith("_"):
            namespace[key] = getattr(plexview, key)
    if numpy is not None:
        namespace["np"] = numpy
        namespace["numpy"] = numpy
    return namespace


def _rememberSource(filename, source):
    """Lets tracebacks quote the lines of source that has no file."""
    lines = source.splitlines(True)
    linecache.cache[filename] = (len(source), None, lines, filename)


def _printTraceback(file):
    """The current exception without this file's own frames."""
    kind, error, trace = sys.exc_info()
    while trace is not None and trace.tb_frame.f_code.co_filename == _thisFile:
        trace = trace.tb_next
    traceback.print_exception(kind, error, trace, file=file)


@contextlib.contextmanager
def _captured(buffer):
    with contextlib.redirect_stdout(buffer), contextlib.redirect_stderr(buffer):
        yield


# --- The console's interpreter --------------------------------------------


class PyInterpreter:
    """The script console's interpreter object."""

    scriptName = "<script>"

    def __init__(self):
        self.namespace = scriptNamespace()
        self.console = code.InteractiveConsole(self.namespace, filename="<console>")
        self.runs = 0

    def runCode(self, source):
        """Runs the source as one program in the console's namespace and
        answers what it printed; an error ends the run with its traceback
        in the answer and never escapes."""
        self.runs += 1
        filename = "<script %d>" % self.runs
        _rememberSource(filename, source)
        out = io.StringIO()
        with _captured(out):
            try:
                exec(compile(source, filename, "exec"), self.namespace)
            except BaseException:  # SystemExit and KeyboardInterrupt too: the program goes on
                _printTraceback(out)
        return out.getvalue()

    def evaluate(self, line):
        """One line of an interactive session: answers the line after its
        prompt (">>> ", or "... " inside an unfinished statement), then what
        it printed, expression values included."""
        prompt = "... " if self.console.buffer else ">>> "
        out = io.StringIO()
        out.write(prompt + line + "\n")
        with _captured(out):
            try:
                self.console.push(line)
            except SystemExit:
                _printTraceback(out)
                self.console.resetbuffer()
        return out.getvalue()

    def resetBuffer(self):
        """Forgets an unfinished statement typed into the evaluation field."""
        self.console.resetbuffer()


# --- plexview --run SCRIPT.py ---------------------------------------------


def runScript(path):
    """Runs a script file in a namespace of its own, as __main__, with its
    output on the program's standard output. An error prints its traceback
    on standard error and the program goes on; sys.exit(status) ends the
    program with that status."""
    namespace = scriptNamespace("__main__")
    namespace["__file__"] = path
    try:
        with open(path, encoding="utf-8") as script:
            source = script.read()
        exec(compile(source, path, "exec"), namespace)
    except SystemExit as request:
        status = request.code
        if status is not None and not isinstance(status, int):
            print(status, file=sys.stderr)
            status = 1
        plexview.quitApplication(status or 0)
    except BaseException:
        _printTraceback(sys.stderr)
    finally:
        sys.stdout.flush()
        sys.stderr.flush()


# --- plexview --render FILE -o OUT ----------------------------------------


class BatchError(Exception):
    """A render that cannot go on; the message says why."""


def _progress(name, done, total):
    """One progress line, rewritten in place on a terminal; elsewhere
    (a log, a pipe) only its final state."""
    line = "plexview: laying out %s: %d of %d steps" % (name, done, total)
    if sys.stderr.isatty():
        sys.stderr.write("\r" + line + ("\n" if done == total else ""))
    elif done == total:
        sys.stderr.write(line + "\n")
    sys.stderr.flush()


def layOut(view, steps, name="the network", chunks=20):
    """Runs `steps` layout steps in a few batches, with a progress line on
    standard error."""
    view.prepareFrame()
    done = 0
    batch = max(1, -(-steps // chunks))
    _progress(name, done, steps)
    while done < steps:
        count = min(batch, steps - done)
        view.iterateBy(count)
        done += count
        _progress(name, done, steps)


def _propertyValues(controller, name):
    """The values of a colour property, or a vertex property of the network."""
    for key, values in controller.colorsDictionary().items():
        if key == name:
            return values
    network = controller.network()
    if name in network.keysForPropertiesOfVertices():
        return network.propertyForKey(name)
    return None


def _colourNames(controller):
    names = list(controller.colorPropertyNames())
    for key in controller.network().keysForPropertiesOfVertices():
        if key not in names and key not in ("Position", "Name"):
            names.append(key)
    return names


def colourBy(controller, name):
    """Colours the vertices by a property through the controller's own
    colouring (numbers through the selected transform and map, text by
    category)."""
    if _propertyValues(controller, name) is None:
        raise BatchError(
            "no property %r to colour by; the network has: %s"
            % (name, ", ".join(_colourNames(controller)) or "none")
        )
    controller.selectColorProperty(name)


def pictureWriter(view, output):
    """A function (width, height, lineWidth) that writes the view as a
    picture or a vector document, chosen by the name's extension."""
    return lambda width, height, lineWidth: view.exportImageToFile(output, width, height, lineWidth)


def renderFile(file, output, iterations=200, width=800, height=600, colorBy="", labels="none"):
    """plexview --render: reads the network file, lays it out for
    `iterations` steps, colours it (by `colorBy` when given), labels its
    vertices as `labels` says ("none", "selected", "all") and writes the
    picture. Answers the program's exit status; a failure prints why."""
    file, output = os.fspath(file), os.fspath(output)
    try:
        network = plexview.openNetworkFile(file)
        controller = plexview.VXLController.init()
        controller.setNetwork(network)
        if colorBy:
            colourBy(controller, colorBy)
        view = controller.networkView()
        view.setShowLabels(labels)
        write = pictureWriter(view, output)
        layOut(view, iterations, os.path.basename(file))
        view.prepareFrame()
        view.zoomToFit(width, height)  # framed, as a window frames a settled network
        try:
            write(width, height, controller.viewLineWidth())
        except OSError:
            return 1  # the view has logged why
    except (BatchError, plexview.ReadError, OSError, RuntimeError) as error:
        sys.stderr.write("plexview: %s\n" % (str(error) or "%s: %s" % (file, type(error).__name__)))
        return 1
    except MemoryError:
        sys.stderr.write("plexview: %s: not enough memory to lay out and draw the network\n" % file)
        return 1
    print(output)
    return 0
