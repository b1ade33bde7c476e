"""An authentication agent of polkit for one process, answering as a person at its dialog would, by the real password check."""

import subprocess

from gi.repository import Gio, GLib

AUTHORITY = ("org.freedesktop.PolicyKit1", "/org/freedesktop/PolicyKit1/Authority", "org.freedesktop.PolicyKit1.Authority")
PLACE = "/org/example/corvane/test/Agent"
CHECKER = "/usr/lib/polkit-1/polkit-agent-helper-1"
INTERFACE = """
<node><interface name="org.freedesktop.PolicyKit1.AuthenticationAgent">
  <method name="BeginAuthentication">
    <arg type="s" name="action_id" direction="in"/>
    <arg type="s" name="message" direction="in"/>
    <arg type="s" name="icon_name" direction="in"/>
    <arg type="a{ss}" name="details" direction="in"/>
    <arg type="s" name="cookie" direction="in"/>
    <arg type="a(sa{sv})" name="identities" direction="in"/>
  </method>
  <method name="CancelAuthentication"><arg type="s" name="cookie" direction="in"/></method>
</interface></node>
"""


class Agent:
    """Answers each question with the next of `passwords`; `questions` are (action, message) of those that were asked."""

    def __init__(self, process, administrator, passwords):
        self.administrator = administrator
        self.passwords = list(passwords)
        self.questions = []
        self.bus = Gio.bus_get_sync(Gio.BusType.SYSTEM)
        interface = Gio.DBusNodeInfo.new_for_xml(INTERFACE).interfaces[0]
        self.bus.register_object(PLACE, interface, self.called)
        with open(f"/proc/{process}/stat", encoding="ascii") as stat:
            start = int(stat.read().rsplit(")", 1)[1].split()[19])
        subject = ("unix-process", {"pid": GLib.Variant("u", process), "start-time": GLib.Variant("t", start)})
        arguments = GLib.Variant("((sa{sv})ss)", (subject, "C", PLACE))
        self.bus.call_sync(*AUTHORITY, "RegisterAuthenticationAgent", arguments, None, 0, -1)

    def called(self, _bus, _sender, _place, _interface, method, arguments, invocation):
        if method == "BeginAuthentication":
            action, message, _icon, _details, cookie, _identities = arguments.unpack()
            self.questions.append((action, message))
            self.answer(cookie, self.passwords.pop(0))
        invocation.return_value(None)

    def answer(self, cookie, password):
        with subprocess.Popen(
            [CHECKER, self.administrator], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True, bufsize=1
        ) as checker:
            checker.stdin.write(cookie + "\n")
            for line in checker.stdout:
                if line.startswith("PAM_PROMPT_ECHO_OFF"):
                    checker.stdin.write(password + "\n")
