#!/usr/bin/python3
"""Players on the session bus for the tests. Each line of the input is a Python call of one of the functions below; each
call that a player gets, and each line that is done, is a line of the output."""

import os
import sys

import dbus
import dbus.bus
import dbus.mainloop.glib
from dbus import Dictionary, Int64, ObjectPath, UInt64  # for the lines of the input
from dbusmock import mockobject
from gi.repository import GLib

PATH = '/org/mpris/MediaPlayer2'
PLAYER = 'org.mpris.MediaPlayer2.Player'
players = {}
removed = []
refusing = set()


class Player(mockobject.DBusMockObject):
    """A player with a connection of its own."""

    def __init__(self, name, properties):
        self.name = name
        self.asked = 0
        self.bus = dbus.bus.BusConnection(dbus.bus.BusConnection.TYPE_SESSION)
        self.bus.set_exit_on_disconnect(False)
        super().__init__(dbus.service.BusName('org.mpris.MediaPlayer2.' + name, self.bus), PATH, PLAYER,
                         dbus.Dictionary(properties, signature='sv'))
        for method, arguments in (('Play', ''), ('Pause', ''), ('PlayPause', ''), ('Stop', ''), ('Next', ''),
                                  ('Previous', ''), ('Seek', 'x')):
            self.AddMethod(PLAYER, method, arguments, '', '')

    @dbus.service.method('org.freedesktop.DBus.Properties', in_signature='s', out_signature='a{sv}')
    def GetAll(self, interface, *_arguments, **_keywords):
        self.asked += 1
        if self.name in refusing:
            raise dbus.exceptions.DBusException('no', name='org.freedesktop.DBus.Error.Failed')
        return self.props[interface]

    def log(self, msg):
        if not msg.startswith(('Get', 'emit')):
            say(self.name + ' ' + msg.replace(PATH + ' ' + PLAYER + '.', ''))


def say(line):
    sys.stdout.write(line + '\n')
    sys.stdout.flush()


def metadata(**entries):
    """Metadata by the names behind the colons."""
    spaces = {'length': 'mpris:', 'artUrl': 'mpris:', 'trackid': 'mpris:'}
    return Dictionary({spaces.get(key, 'xesam:') + key: value for key, value in entries.items()}, signature='sv')


def add(name, **properties):
    players[name] = Player(name, properties)


def name_again(name, times):
    """More names for the same player."""
    for number in range(times):
        players[name].bus.request_name(f'org.mpris.MediaPlayer2.{name}{number}')


def tell(name, properties, changed, invalidated):
    players[name].props[PLAYER].update(properties)
    players[name].EmitSignal('org.freedesktop.DBus.Properties', 'PropertiesChanged', 'sa{sv}as',
                             [PLAYER, Dictionary(changed, signature='sv'), dbus.Array(invalidated, signature='s')])


def change(name, **properties):
    tell(name, properties, properties, [])


def invalidate(name, **properties):
    tell(name, properties, {}, list(properties))


def refuse(name):
    """Has no properties any more, and says so, as playerctld does when the last player goes."""
    refusing.add(name)
    tell(name, {}, {}, list(players[name].props[PLAYER]))


def answer(name, **properties):
    """Has these properties and no others, and answers again."""
    refusing.discard(name)
    players[name].props[PLAYER] = Dictionary(properties, signature='sv')
    tell(name, {}, {}, list(properties))


def signal(name, member, signature, *arguments):
    players[name].EmitSignal(PLAYER, member, signature, list(arguments))


def remove(name):
    player = players.pop(name)
    player.remove_from_connection()
    player.bus.close()
    # Python's object would want to give the name back.
    removed.append(player)


def do(source, _condition):
    line = source.readline()
    if not line:
        loop.quit()
        return False
    eval(line)
    say('done')
    return True


dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
loop = GLib.MainLoop()
GLib.io_add_watch(sys.stdin, GLib.PRIORITY_DEFAULT, GLib.IO_IN | GLib.IO_HUP, do)
loop.run()
os._exit(0)
