#!/usr/bin/python3
# Drives the running tool through the accessibility bus as a screen reader or voice control
# does: lists the buttons of the first settings page with the names the bus gives them,
# opens the page for editing, types a value into a field through the editable-text
# interface (the path of dictation and automation), applies it, and checks that the page
# went back to viewing with that value, which it does only once the device's read-back agrees.
#
#   atspi-settings.py LANGUAGE FIELD VALUE      (LANGUAGE de or en, FIELD the field's index)
import sys
import time

import pyatspi

CAPTIONS = {
    'de': ('Einstellungen A', 'Einstellen', 'Einstellungen', 'Übernehmen'),
    'en': ('Settings A', 'Edit', 'Settings', 'Apply'),
}


def tool():
    for _ in range(60):
        desktop = pyatspi.Registry.getDesktop(0)
        for i in range(desktop.childCount):
            app = desktop.getChildAtIndex(i)
            if app is not None and app.name == 'mq27diag':
                return app
        time.sleep(0.5)
    sys.exit('atspi-settings: the tool is not on the accessibility bus')


def tree(node):
    yield node
    for i in range(node.childCount):
        child = node.getChildAtIndex(i)
        if child is not None:
            yield from tree(child)


def shown(app, roles):
    return [n for n in tree(app)
            if n.getRoleName() in roles and n.getState().contains(pyatspi.STATE_SHOWING)]


def say_buttons(app, heading):
    print(heading)
    for b in shown(app, ('push button',)):
        print(f'    button "{b.name}", {b.description}')


def press(app, name, context):
    for b in shown(app, ('push button',)):
        if b.name == name and b.description == context:
            b.queryAction().doAction(0)
            return
    sys.exit(f'atspi-settings: no button "{name}" ({context}) on the bus')


def main():
    tab, edit, frame, apply_ = CAPTIONS[sys.argv[1]]
    index, value = int(sys.argv[2]), sys.argv[3]
    app = tool()
    page = None
    for _ in range(60):  # the main view comes after the device search
        page = next((n for n in tree(app) if n.getRoleName() == 'page tab' and n.name == tab), None)
        if page is not None:
            break
        time.sleep(0.5)
    if page is None:
        sys.exit(f'atspi-settings: no page "{tab}" on the bus')
    page.queryAction().doAction(0)
    time.sleep(1)
    say_buttons(app, f'Page "{tab}":')
    press(app, edit, frame)
    time.sleep(1)
    say_buttons(app, f'After "{edit}":')
    fields = [f for f in shown(app, ('text', 'spin button'))
              if f.getState().contains(pyatspi.STATE_EDITABLE)]
    field = fields[index]
    before = field.queryText().getText(0, -1)
    if not field.queryEditableText().setTextContents(value):
        sys.exit('atspi-settings: the field refused the text')
    print(f'Field "{field.name}" ({field.description}): {before} -> {value}')
    press(app, apply_, frame)
    for _ in range(30):
        time.sleep(1)
        viewing = any(b.name == edit and b.description == frame for b in shown(app, ('push button',)))
        if viewing:
            shows = field.queryText().getText(0, -1)
            print(f'Back to viewing; the field shows {shows}')
            sys.exit(0 if shows == value else 1)
    sys.exit('atspi-settings: the page did not go back to viewing')


main()
