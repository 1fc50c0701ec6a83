"""A simulated laptop: real desktop services on private buses, around simulated power hardware."""
from .desk import Desk
from .folders import default_folder, folder_for, fresh_folder, remove
from .processes import DeskError
from .waiting import exit_at_next_wait, exit_if_asked, wait_for

__all__ = ['Desk', 'DeskError', 'default_folder', 'folder_for', 'exit_at_next_wait', 'exit_if_asked',
           'fresh_folder', 'remove', 'wait_for']
