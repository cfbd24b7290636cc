"""Times a formatter that is a library in C, pass by pass: libraries.py {tidy|xmllint} PAGE PASSES

The milliseconds are those of the processor: both work in one thread.
"""

import ctypes
import sys
import time


def tidy():
    library = ctypes.CDLL("libtidy.so.5deb1")
    library.tidyCreate.restype = ctypes.c_void_p
    options = {b"indent": b"auto", b"quiet": b"yes", b"force-output": b"yes", b"char-encoding": b"utf8"}

    def new_buffer():
        buffer = ctypes.create_string_buffer(64)
        library.tidyBufInit(buffer)
        return buffer

    def format_page(text):
        document = ctypes.c_void_p(library.tidyCreate())
        messages, output = new_buffer(), new_buffer()
        library.tidySetErrorBuffer(document, ctypes.byref(messages))
        for name, value in options.items():
            library.tidyOptParseValue(document, name, value)
        library.tidyParseString(document, text)
        library.tidyCleanAndRepair(document)
        library.tidySaveBuffer(document, ctypes.byref(output))
        library.tidyBufFree(messages)
        library.tidyBufFree(output)
        library.tidyRelease(document)

    return format_page


def xmllint():
    library = ctypes.CDLL("libxml2.so.2")
    library.htmlReadMemory.restype = ctypes.c_void_p
    release = ctypes.CFUNCTYPE(None, ctypes.c_void_p).in_dll(library, "xmlFree")
    recover_and_be_quiet = 1 | 32 | 64

    def format_page(text):
        document = ctypes.c_void_p(
            library.htmlReadMemory(text, len(text), None, b"utf-8", recover_and_be_quiet)
        )
        output, size = ctypes.c_void_p(), ctypes.c_int()
        library.htmlDocDumpMemoryFormat(document, ctypes.byref(output), ctypes.byref(size), 1)
        release(output)
        library.xmlFreeDoc(document)

    return format_page


name, page, passes = sys.argv[1], sys.argv[2], int(sys.argv[3])
with open(page, "rb") as file:
    text = file.read()
format_page = {"tidy": tidy, "xmllint": xmllint}[name]()
for number in range(1, passes + 1):
    start = time.thread_time()
    format_page(text)
    print(f"pass {number}: {(time.thread_time() - start) * 1000}")
