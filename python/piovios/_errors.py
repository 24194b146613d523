"""What this package raises besides TypeError and ValueError for arguments that are wrong in themselves."""


class Error(Exception):
    """Everything that this package raises of its own."""


class NotAttached(Error):
    """The process cannot attach to the region; the text says why and what to do."""


class NotFound(Error, LookupError):
    """There is no such object in the region."""


class WrongUse(Error):
    """A closed node, another thread, a write without write=True, or a second region or platform in one process."""
