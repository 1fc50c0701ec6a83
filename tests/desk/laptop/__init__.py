"""A simulated laptop: real desktop services on private buses, around simulated power hardware."""
from .desk import Desk
from .folders import folder_for
from .processes import DeskError
from .waiting import wait_for

__all__ = ['Desk', 'DeskError', 'folder_for', 'wait_for']
