"""Uses the client through the accessibility bus as a screen reader does. Exit status 1 when something is not as it should be.

usage: screen_reader.py PROGRAM     (with a display, a session bus, and settings of its own; see scripts/accessibility)
"""
import subprocess
import sys
import time

import gi

gi.require_version('Atspi', '2.0')
from gi.repository import Atspi, Gio, GLib  # noqa: E402

PORTAL = '/org/freedesktop/portal/desktop'
SETTINGS = 'org.freedesktop.portal.Settings'
PRESSABLE = {'push button', 'check box', 'list item', 'link', 'page tab'}
faults, announced = [], []


def fault(text):
    faults.append(text)
    print('FAULT', text, flush=True)


def spin(seconds=0.05):
    end = time.monotonic() + seconds
    context = GLib.MainContext.default()
    while time.monotonic() < end:
        while context.pending():
            context.iteration(False)
        time.sleep(0.01)


def shown(node, found=None):
    """Every object that a listener can reach now."""
    found = [] if found is None else found
    try:
        if node.get_state_set().contains(Atspi.StateType.SHOWING):
            found.append(node)
        for at in range(node.get_child_count()):
            child = node.get_child_at_index(at)
            if child:
                shown(child, found)
    except GLib.Error:
        pass  # gone meanwhile
    return found


def name_of(node):
    # Qt keeps a password field's name to itself; its description holds it.
    return node.get_name() or (node.get_description() if node.get_role_name() == 'password text' else '')


def find(role, name):
    for node in shown(desktop):
        if node.get_role_name() == role and name_of(node) == name:
            return node
    return None


def wait_for(what, condition, seconds=20):
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        spin()
        try:
            found = condition()
        except GLib.Error:
            continue  # an object went while it was asked
        if found:
            print('ok   ', what, flush=True)
            return found
    fault(what)
    for node in shown(desktop):
        print('      ', node.get_role_name(), repr(name_of(node)))
    sys.exit(1)


def actions(node):
    if 'Action' not in node.get_interfaces():
        return []
    return [Atspi.Action.get_action_name(node, at) for at in range(Atspi.Action.get_n_actions(node))]


def press(role, name, action='Press'):
    node = wait_for(f'there is a {role} "{name}"', lambda: find(role, name))
    Atspi.Action.do_action(node, actions(node).index(action))
    return node


def listen(event):
    try:
        if event.detail1 and event.source.get_role_name() == 'alert':
            announced.append(event.source.get_name())
    except GLib.Error:
        pass


def look_through(screen):
    """What every screen must keep."""
    nodes = wait_for(f'{screen} can be read', lambda: [
        (node.get_role_name(), name_of(node), actions(node)) for node in shown(desktop)])
    rows = [name for role, name, _ in nodes if role == 'list item']
    for row in rows:
        if rows.count(row) > 1:
            fault(f'{screen}: row "{row}" appears {rows.count(row)} times')
    for role, name, possible in nodes:
        if (role in PRESSABLE or role in ('text', 'password text')) and not name:
            fault(f'{screen}: a {role} has no name')
        if role in PRESSABLE and possible.count('Press') != 1:
            fault(f'{screen}: {role} "{name}" has the actions {possible}')
        if role == 'push button' and name in rows:
            fault(f'{screen}: row "{name}" is a push button, too')
    print(f'ok    {screen}: {len(nodes)} objects, {len(rows)} rows', flush=True)


def set_up_portal():
    """A desktop's settings portal: animations are off."""
    bus = Gio.bus_get_sync(Gio.BusType.SESSION)
    interface = Gio.DBusNodeInfo.new_for_xml(
        f'<node><interface name="{SETTINGS}"><method name="Read"><arg type="s" direction="in"/>'
        '<arg type="s" direction="in"/><arg type="v" direction="out"/></method></interface></node>').interfaces[0]
    bus.register_object(PORTAL, interface, lambda *call: call[-1].return_value(
        GLib.Variant('(v)', (GLib.Variant('v', GLib.Variant('b', False)),))))
    Gio.bus_own_name_on_connection(bus, 'org.freedesktop.portal.Desktop', Gio.BusNameOwnerFlags.NONE)
    return bus


def allow_motion(bus):
    bus.emit_signal(None, PORTAL, SETTINGS, 'SettingChanged', GLib.Variant(
        '(ssv)', ('org.gnome.desktop.interface', 'enable-animations', GLib.Variant('b', True))))
    bus.flush_sync()


def places_while_the_menu_opens():
    """Where the centre's other button stands from the press on, place after place."""
    button = find('push button', 'Contacter la station')
    places = []
    press('push button', 'Menu')
    end = time.monotonic() + 0.5
    while time.monotonic() < end:
        x = button.get_extents(Atspi.CoordType.WINDOW).x
        if x not in places:
            places.append(x)
    press('push button', 'Fermer le menu')
    wait_for('the menu is closed', lambda: not find('text', 'Rechercher'))
    return places


session = set_up_portal()
client = subprocess.Popen([sys.argv[1], '--delay', '3000'])
try:
    listener = Atspi.EventListener.new(listen)
    listener.register('object:state-changed:showing')
    desktop = Atspi.get_desktop(0)

    wait_for('the overlay is announced', lambda: 'Please Wait...' in announced)
    press('push button', 'Menu')
    spin(0.5)
    if find('text', 'Rechercher'):
        fault('a press passed the overlay')
    wait_for('the overlay is gone', lambda: not find('alert', 'Please Wait...'))

    press('list item', 'Orvel La Radio')
    wait_for('the row plays its radio', lambda: find('push button', 'Pause'))
    look_through('radios')
    press('push button', 'Pause')
    wait_for('it pauses', lambda: find('push button', 'Lecture'))

    press('push button', 'Contacter la station')
    wait_for('the sheet is a dialog', lambda: find('dialog', 'Please Select Options'))
    look_through('contact')
    press('push button', 'SMS')
    wait_for('the sheet is gone', lambda: not find('dialog', 'Please Select Options'))

    press('push button', 'Menu')
    wait_for('the menu has a named field', lambda: find('text', 'Rechercher'))
    look_through('menu')
    unavailable = "Cette rubrique n'est pas encore disponible."
    press('list item', 'News')
    wait_for('the alert is announced', lambda: any(unavailable in name for name in announced))
    wait_for('its button has the focus',
             lambda: find('push button', 'OK').get_state_set().contains(Atspi.StateType.FOCUSED))
    press('push button', 'Fermer le menu')
    spin(0.5)
    if not find('text', 'Rechercher'):
        fault('a press passed the alert')
    press('push button', 'OK')
    press('push button', 'Fermer le menu')
    wait_for('the menu is closed', lambda: not find('text', 'Rechercher'))

    press('push button', 'Ajouter aux favoris : Orvel La Radio')
    press('push button', 'OK')
    wait_for('the login form has named fields',
             lambda: find('text', 'Adresse e-mail') and find('password text', 'Mot de passe'))
    look_through('login')
    box = press('check box', 'Se souvenir de moi', 'Toggle')
    wait_for('the box is checked', lambda: box.get_state_set().contains(Atspi.StateType.CHECKED))
    press('check box', 'Se souvenir de moi')
    wait_for('and unchecked', lambda: not box.get_state_set().contains(Atspi.StateType.CHECKED))
    press('push button', 'Fermer')
    wait_for('the form is gone', lambda: not find('check box', 'Se souvenir de moi'))

    places = places_while_the_menu_opens()
    if len(places) > 2:
        fault(f'the menu moves where the desktop asks for reduced motion: {places}')
    allow_motion(session)
    places = places_while_the_menu_opens()
    if len(places) < 4:
        fault(f'the menu does not move: {places}')
finally:
    client.terminate()
    client.wait()
print(f'{len(faults)} faults')
sys.exit(1 if faults else 0)
