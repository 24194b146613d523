"""What cffi makes of the public headers."""
from typing import Any

ffi: Any
