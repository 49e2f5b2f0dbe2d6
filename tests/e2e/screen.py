"""What the program shows, read and used through the accessibility bus as an assistive tool would.

Only what a person could see now is found: hidden controls and windows are passed over. Presses go
through the mouse and the keyboard of the X server, so a control that is covered or takes no clicks
fails here as it would in front of a person. There is no window manager: windows open at the top
left corner, without a frame, and the tests put them where they want them.
"""

import re

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

import processes  # noqa: E402


class Element:
    """A control, text or window as the accessibility bus knows it.

    Everything is asked anew at each use. An element that the program has removed raises GLib.Error.
    """

    def __init__(self, screen, accessible):
        self.screen = screen
        self._accessible = accessible

    def __repr__(self):
        return f"{self.role} {self.name!r}"

    @property
    def role(self):
        return self._accessible.get_role_name()

    @property
    def name(self):
        return self._accessible.get_name()

    @property
    def description(self):
        """What the element says when it is asked; of digits that run, the digits."""
        return self._accessible.get_description()

    @property
    def text(self):
        """What is typed in a field, or what a label says."""
        if "Text" in self._accessible.get_interfaces():
            return Atspi.Text.get_text(self._accessible, 0, -1)
        return self.name

    def process(self):
        try:
            return self._accessible.get_process_id()
        except GLib.Error:  # it has ended meanwhile
            return None

    def states(self):
        """Names as in "showing", "checked", "focused", "enabled"."""
        return {state.value_nick for state in self._accessible.get_state_set().get_states()}

    def extents(self):
        """x, y, width and height on the screen."""
        box = Atspi.Component.get_extents(self._accessible, Atspi.CoordType.SCREEN)
        return box.x, box.y, box.width, box.height

    def centre(self):
        x, y, width, height = self.extents()
        return x + width // 2, y + height // 2

    def click(self):
        """Presses the mouse in the middle of the element."""
        self.screen.mouse(*self.centre(), "click", "1")

    def press(self):
        """Does what a screen reader does to press the element."""
        names = [Atspi.Action.get_action_name(self._accessible, index)
                 for index in range(Atspi.Action.get_n_actions(self._accessible))]
        if not Atspi.Action.do_action(self._accessible, names.index("Press")):
            raise AssertionError(f"{self} did not take the press")

    def children(self):
        count = self._accessible.get_child_count()
        found = (self._accessible.get_child_at_index(index) for index in range(count))
        return [Element(self.screen, accessible) for accessible in found if accessible]

    def descendants(self):
        """Everything below that shows, in reading order."""
        for child in self.children():
            try:
                # The desktop's are applications, which have no state of their own while they start.
                if self is not self.screen and "showing" not in child.states():
                    continue
                yield child
            except GLib.Error:  # removed meanwhile
                continue
            yield from child.descendants()

    def find(self, role=None, name=None, seconds=30.0):
        """Waits for the first descendant with that role name and that name (text or pattern)."""
        wanted = " ".join(str(part) for part in (role, name) if part is not None)
        return processes.wait_until(lambda: self.look(role, name), f"{wanted} in {self}", seconds)

    def look(self, role=None, name=None):
        """The first such descendant at this moment, or None."""
        try:
            return next((element for element in self.descendants()
                         if _matches(element, role, name)), None)
        except GLib.Error:  # the program was changing its tree: as good as not there yet
            return None

    def has_focus(self):
        """Whether something in it has the keyboard, also out of view."""
        try:
            return "focused" in self.states() or any(child.has_focus() for child in self.children())
        except GLib.Error:  # the program was changing its tree
            return False

    def tree(self, depth=0):
        """The tree as text, for the reader of a failed run."""
        lines = [f"{'  ' * depth}{self} {self.extents()} {' '.join(sorted(self.states()))}"]
        for child in self.children():
            lines += child.tree(depth + 1)
        return lines


class Screen(Element):
    """The whole desktop of a stage; finds elements of any window."""

    def __init__(self, stage):
        desktop = Atspi.get_desktop(0)
        # The library learns of changes through a main loop, which a test doesn't run.
        desktop.set_cache_mask(Atspi.Cache.NONE)
        super().__init__(self, desktop)
        self.stage = stage

    def program(self, program):
        """The windows of that program, among those of several."""
        def look():
            if program.ended():
                raise AssertionError("the program ended while it started")
            return next((child for child in self.children()
                         if child.process() == program.pid and child.look()), None)
        return processes.wait_until(look, f"the windows of process {program.pid}", 60)

    def window(self, title):
        """A window by its whole title."""
        return processes.wait_until(lambda: self._look_for_window(title), title)

    def mouse(self, x, y, *actions):
        self.stage.run("xdotool", "mousemove", str(x), str(y), *actions)

    def focus_program(self, pid, title):
        """Brings a window of that program to the front and gives it the keyboard."""
        found = self._x_window(title, "--pid", str(pid))
        self.stage.run("xdotool", "windowraise", found, "windowfocus", "--sync", found)

    def move_program(self, pid, title, x, y):
        """Puts a window elsewhere, with its top left corner at x, y."""
        self.stage.run("xdotool", "windowmove", self._x_window(title, "--pid", str(pid)),
                       str(x), str(y))

    def resize_program(self, pid, title, width, height):
        self.stage.run("xdotool", "windowsize", self._x_window(title, "--pid", str(pid)),
                       str(width), str(height))

    def key(self, *names):
        """Presses keys by X name: "space", "Left", "ctrl+o"."""
        self.stage.run("xdotool", "key", *names)

    def hold_key(self, name, seconds):
        """Keeps a key down so long that it repeats (X repeats after 0.66 s, every 40 ms)."""
        self.stage.run("xdotool", "keydown", name, "sleep", str(seconds), "keyup", name)

    def type(self, text):
        self.stage.run("xdotool", "type", "--delay", "5", text)

    def picture(self, title, path):
        """Writes what shows of a window as a PNG file."""
        self.stage.picture(path, *self.window(title).extents())

    def answer_file_dialog(self, title, path):
        """Types the path into a file dialog and confirms it."""
        dialog = self.window(title)
        processes.wait_until(lambda: "active" in dialog.states(), f"{title} to have the keyboard")
        field = dialog.find("text")
        processes.wait_until(lambda: "focused" in field.states(), "the file name field")
        self.key("ctrl+a")
        self.type(str(path))
        processes.wait_until(lambda: field.text == str(path), "the typed path")
        # The first Return may only take the name that the field proposes as one types.
        self.key("Return")
        processes.wait_until(lambda: self._look_for_window(title) is None, f"{title} to go")

    def _look_for_window(self, title):
        """One of a program's own windows: what lies over a window may have the title of another."""
        try:
            return next((window for program in self.children() for window in program.children()
                         if window.name == title), None)
        except GLib.Error:  # a program was changing its tree
            return None

    def _x_window(self, title, *conditions):
        return self.stage.run("xdotool", "search", "--onlyvisible", "--all", *conditions, "--name",
                              f"^{re.escape(title)}$").split()[0]


def _matches(element, role, name):
    return _fits(element.role, role) and (name is None or _fits(element.name, name))


def _fits(text, wanted):
    if wanted is None:
        return True
    return wanted.fullmatch(text) is not None if isinstance(wanted, re.Pattern) else text == wanted
