#!/usr/bin/python3
"""What a spreadsheet takes that is open already.

warm-spreadsheet.py BOOK PROFILE SECONDS SHEET!CELL AMOUNT [SHEET!CELL...]

Opens the workbook in a LibreOffice that nobody sees, adds the amount to the cell and takes it away
again, reads each time every cell that it moves, then calculates everything anew, and saves
nothing. Gives lines of a word and a number: "dependents", and "call", "edit" and "full" in seconds,
the least of several. Behind "edit", and again behind "full", stands the value of each further cell
that was named, the amount taken away. After so many seconds it ends, and LibreOffice with it.
"""

import ctypes
import os
import shutil
import signal
import subprocess
import sys
import time
from pathlib import Path

import uno
from com.sun.star.beans import PropertyValue
from com.sun.star.connection import NoConnectException

EDITS = 9  # the last one leaves the amount taken away
FULL_RUNS = 3

# Within LibreOffice, since each call from outside takes its time.
MACRO = """
Sub Nothing
End Sub

Function Edit(Book, Cell, Amount, Ranges) As Double
    Dim Total As Double
    Dim Part
    Cell.setValue(Amount)
    Book.calculate()
    For Each Part In Ranges
        Total = Total + Part.computeFunction(com.sun.star.sheet.GeneralFunction.SUM)
    Next
    Edit = Total
End Function
"""


def end_with_parent():
    """Whatever ends the process that started this one ends this one too."""
    pr_set_pdeathsig = 1
    ctypes.CDLL(None).prctl(pr_set_pdeathsig, signal.SIGKILL)


def start(profile, pipe):
    # The program itself: what usually starts it would stay between it and us.
    program = str(Path(shutil.which("soffice")).resolve()) + ".bin"
    return subprocess.Popen(
        [program, f"-env:UserInstallation=file://{profile}", "--headless", "--norestore",
         "--nologo", f"--accept=pipe,name={pipe};urp"],
        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, preexec_fn=end_with_parent)


def connected(profile):
    """The context of a LibreOffice that has been started, and its process."""
    restart = 81  # how it ends where the profile was new
    pipe = f"zolmara-bench-{os.getpid()}"
    resolver = uno.getComponentContext().ServiceManager.createInstance(
        "com.sun.star.bridge.UnoUrlResolver")
    process = start(profile, pipe)
    while True:
        try:
            context = resolver.resolve(f"uno:pipe,name={pipe};urp;StarOffice.ComponentContext")
            return context, process
        except NoConnectException:
            time.sleep(0.05)
        if process.poll() == restart:
            process = start(profile, pipe)
        elif process.poll() is not None:
            sys.exit(f"soffice ended with {process.returncode}")


def opened(context, book):
    hidden = PropertyValue()
    hidden.Name, hidden.Value = "Hidden", True
    desktop = context.ServiceManager.createInstanceWithContext(
        "com.sun.star.frame.Desktop", context)
    document = desktop.loadComponentFromURL(
        Path(book).resolve().as_uri(), "_blank", 0, (hidden,))
    if document is None:
        sys.exit(f"{book} was not opened")
    return document


def macros(context):
    """The macro's procedures by name, in the private profile."""
    manager = context.ServiceManager
    libraries = manager.createInstanceWithContext(
        "com.sun.star.script.ApplicationScriptLibraryContainer", context)
    libraries.loadLibrary("Standard")
    library = libraries.getByName("Standard")
    if library.hasByName("Bench"):
        library.removeByName("Bench")
    library.insertByName("Bench", MACRO)
    provider = manager.createInstanceWithContext(
        "com.sun.star.script.provider.MasterScriptProviderFactory",
        context).createScriptProvider("")

    def procedure(name):
        script = provider.getScript(
            f"vnd.sun.star.script:Standard.Bench.{name}?language=Basic&location=application")
        return lambda *words: script.invoke(words, (), ())[0]

    return procedure


def cell_at(document, address):
    sheet, cell = address.split("!")
    return document.Sheets.getByName(sheet).getCellRangeByName(cell)


def values(sheet):
    cursor = sheet.createCursor()
    cursor.gotoEndOfUsedArea(False)
    end = cursor.getRangeAddress()
    return sheet.getCellRangeByPosition(0, 0, end.EndColumn, end.EndRow).getDataArray()


def moved(before, after):
    """The rows and columns of the cells that differ."""
    return [(row, column)
            for row, (old, new) in enumerate(zip(before, after)) if old != new
            for column, pair in enumerate(zip(old, new)) if pair[0] != pair[1]]


def dependents(document, change):
    """A range a sheet around the cells that the change moves, and how many these are."""
    sheets = [document.Sheets.getByName(name) for name in document.Sheets.ElementNames]
    before = [values(sheet) for sheet in sheets]
    change()
    ranges, count = [], 0
    for sheet, old in zip(sheets, before):
        cells = moved(old, values(sheet))
        count += len(cells)
        if cells:
            rows, columns = zip(*cells)
            ranges.append(sheet.getCellRangeByPosition(
                min(columns), min(rows), max(columns), max(rows)))
    return tuple(ranges), count


def least(runs, work):
    times = []
    for run in range(runs):
        begin = time.perf_counter()
        work(run)
        times.append(time.perf_counter() - begin)
    return min(times)


def tell(document, checked):
    for address in checked:
        print(address, repr(cell_at(document, address).getValue()))


def measure(document, procedure, address, amount, checked):
    cell = cell_at(document, address)
    amounts = (cell.getValue(), cell.getValue() + amount)
    nothing, edit = procedure("Nothing"), procedure("Edit")
    ranges, count = dependents(
        document, lambda: edit(document, cell, amounts[1], ()))
    print("dependents", count - 1)
    nothing()
    print("call", least(EDITS, lambda run: nothing()))
    print("edit", least(EDITS, lambda run: edit(document, cell, amounts[run % 2], ranges)))
    tell(document, checked)
    print("full", least(FULL_RUNS, lambda run: document.calculateAll()))
    tell(document, checked)


def main(book, profile, seconds, address, amount, *checked):
    end_with_parent()
    signal.alarm(int(seconds))
    context, process = connected(Path(profile).resolve())
    try:
        document = opened(context, book)
        measure(document, macros(context), address, float(amount), checked)
    finally:
        process.kill()
        process.wait()


if __name__ == "__main__":
    main(*sys.argv[1:])
