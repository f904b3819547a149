"""A panel of which only that is there what an item needs: the name under which items are made known."""

from gi.repository import Gio, GLib

NAME = "org.kde.StatusNotifierWatcher"
ITEM = "org.kde.StatusNotifierItem"
INTERFACE = f"""
<node><interface name="{NAME}">
  <method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
  <method name="RegisterStatusNotifierHost"><arg type="s" direction="in"/></method>
  <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
  <property name="ProtocolVersion" type="i" access="read"/>
  <property name="RegisteredStatusNotifierItems" type="as" access="read"/>
  <signal name="StatusNotifierItemRegistered"><arg type="s"/></signal>
  <signal name="StatusNotifierHostRegistered"/>
</interface></node>
"""


class Panel:
    def __init__(self, bus):
        self.items = []  # (name on the bus, path)
        self._bus = bus
        interface = Gio.DBusNodeInfo.new_for_xml(INTERFACE).interfaces[0]
        bus.register_object("/StatusNotifierWatcher", interface, self._call, self._property, None)
        Gio.bus_own_name_on_connection(bus, NAME, Gio.BusNameOwnerFlags.NONE, None, None)

    def _call(self, bus, sender, path, interface, method, arguments, invocation):
        if method == "RegisterStatusNotifierItem":
            given = arguments.unpack()[0]
            self.items.append((sender, given if given.startswith("/") else "/StatusNotifierItem"))
        invocation.return_value(None)

    def _property(self, bus, sender, path, interface, name):
        return {
            "IsStatusNotifierHostRegistered": GLib.Variant("b", True),
            "ProtocolVersion": GLib.Variant("i", 0),
            "RegisteredStatusNotifierItems": GLib.Variant("as", [name + path for name, path in self.items]),
        }[name]

    def title(self):
        """What the item says of itself, which panels read out."""
        name, path = self.items[-1]
        arguments = GLib.Variant("(ss)", (ITEM, "Title"))
        interface = "org.freedesktop.DBus.Properties"
        return self._bus.call_sync(name, path, interface, "Get", arguments, None, 0, -1, None).unpack()[0]

    def activate(self):
        name, path = self.items[-1]
        self._bus.call_sync(name, path, ITEM, "Activate", GLib.Variant("(ii)", (900, 10)), None, 0, -1, None)
