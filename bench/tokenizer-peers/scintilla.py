"""Times Scintilla's HTML lexer without a display: scintilla.py PAGE PASSES"""

import os
import sys
import time

os.environ["QT_QPA_PLATFORM"] = "offscreen"

from PyQt5.Qsci import QsciScintilla
from PyQt5.QtWidgets import QApplication

UTF8 = 65001
page, passes = sys.argv[1], int(sys.argv[2])

application = QApplication([])
editor = QsciScintilla()
send = editor.SendScintilla
send(QsciScintilla.SCI_SETCODEPAGE, UTF8)
send(QsciScintilla.SCI_SETLEXER, QsciScintilla.SCLEX_HTML)
with open(page, "rb") as file:
    send(QsciScintilla.SCI_SETTEXT, file.read())

for number in range(1, passes + 1):
    send(QsciScintilla.SCI_CLEARDOCUMENTSTYLE)
    start = time.perf_counter()
    send(QsciScintilla.SCI_COLOURISE, 0, -1)
    print(f"pass {number}: {(time.perf_counter() - start) * 1000}")
