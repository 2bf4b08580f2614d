#!/usr/bin/python3
"""Looks at the running program through assistive technology's eyes. usage: accessible.py tree | press ROLE NAME. Runs in the account's environment, with the system's own Python, which has the bindings."""

import itertools
import json
import sys

import pyatspi

MOST_CHILDREN = 300  # of a table of any length


def application():
    for app in pyatspi.Registry.getDesktop(0):
        if app is not None and app.name in ("vantoro", "Vantoro"):
            return app
    return None


def walk(node, depth=0):
    if node is None or depth > 30:
        return
    yield node
    for child in itertools.islice(node, MOST_CHILDREN):
        yield from walk(child, depth + 1)


def is_showing(node):
    states = node.getState()
    return states.contains(pyatspi.STATE_SHOWING) and states.contains(pyatspi.STATE_VISIBLE)


def describe(node):
    states = node.getState()
    entry = {"role": node.getRoleName(), "name": node.name, "description": node.description,
             "enabled": states.contains(pyatspi.STATE_ENABLED), "showing": is_showing(node),
             "focused": states.contains(pyatspi.STATE_FOCUSED)}
    try:
        box = node.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
        entry["box"] = [box.x, box.y, box.width, box.height]
    except NotImplementedError:
        pass
    if node.getRole() in (pyatspi.ROLE_TEXT, pyatspi.ROLE_ENTRY):
        text = node.queryText()
        entry["text"] = text.getText(0, text.characterCount)
    return entry


def find(role, name):
    app = application()
    for node in walk(app) if app else ():
        if node.getRoleName() == role and node.name == name and is_showing(node):
            return node
    return None


def main():
    command = sys.argv[1]
    if command == "tree":
        app = application()
        print(json.dumps([describe(node) for node in walk(app)] if app else []))
        return 0
    node = find(*sys.argv[2:4])
    if node is None:
        return 1
    actions = node.queryAction()
    for i in range(actions.nActions):
        if actions.getName(i) in ("Press", "Toggle"):
            return 0 if actions.doAction(i) else 1
    return 1


sys.exit(main())
