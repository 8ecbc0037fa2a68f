#!/usr/bin/python3
"""Writes the version script of a library: which symbols it exports.

Arguments: the root of the sources, the version, the file to write, the number of folders that follow, the
folders, the public headers. Exported is what the public headers mark with ORVANE_EXPORT, and, as a
private version for programs and libraries of the same build, what the other headers mark that the
sources in the folders include, directly or through another header. Everything else stays local: without
the script, the library would also export the instances of templates of the libraries that it is built
with.
"""

import pathlib
import re
import sys

root, version, output, count, *rest = sys.argv[1:]
folders, public = rest[:int(count)], rest[int(count):]
root = pathlib.Path(root)

TOKEN = re.compile(r"\bnamespace\s+([\w:]+)?\s*\{|[{}]"
                   r"|(?:class|struct)\s+ORVANE_EXPORT\s+(\w+)"
                   r"|\bORVANE_EXPORT\b[^;{(]*?(\w+)\s*\(")


def exported(header):
    """The qualified names of the classes and of the functions that a header marks."""
    text = re.sub(r"//[^\n]*|^#.*$", "", (root / header).read_text(), flags=re.M)
    classes, functions, scopes = set(), set(), []
    for match in TOKEN.finditer(text):
        if match[0].startswith("namespace"):
            scopes.append(match[1] or "(anonymous namespace)")
        elif match[0] == "{":
            scopes.append(None)
        elif match[0] == "}":
            if scopes:
                scopes.pop()
        else:
            name = "::".join([scope for scope in scopes if scope] + [match[2] or match[3]])
            (classes if match[2] else functions).add(name)
    return classes, functions


def patterns(headers):
    lines = set()
    for header in headers:
        classes, functions = exported(header)
        for name in classes:
            lines |= {f"{name}::*", f"*thunk to {name}::*", f"guard variable for {name}::*",
                      f"construction vtable for *-in-{name}"}
            for what in ("typeinfo", "typeinfo name", "vtable", "VTT"):
                lines |= {f"{what} for {name}", f"{what} for {name}::*"}
        lines |= {f"{name}*" for name in functions}
    return lines


def node(name, lines, rest=""):
    # The linker reads quoted names literally, and patterns without quotes cannot contain spaces.
    body = "".join(f"      {line.replace(' ', '?')};\n" for line in sorted(lines))
    return f'{name} {{\n  global:\n    extern "C++" {{\n{body}    }};\n{rest}}};\n'


def includes(path):
    return set(re.findall(r'^#include "((?:orvane|platform)/[^"]+)"', path.read_text(), re.M))


# What a header includes counts too: a compiler that inlines less or more refers to other symbols.
private = set()
for folder in folders:
    for path in (root / folder).glob("*.*"):
        if path.suffix in (".h", ".cpp"):
            private |= includes(path)
pending = private
while pending:
    pending = set().union(*(includes(root / header) for header in pending)) - private
    private |= pending
private = {header for header in private
           if header not in public and str(pathlib.Path(header).parent) not in folders}

shared = patterns(public)
text = node(f"ORVANE_{version}", shared, "  local:\n    *;\n")
if private:
    text += node("ORVANE_PRIVATE", patterns(private) - shared)
file = pathlib.Path(output)
if not file.exists() or file.read_text() != text:
    file.write_text(text)
