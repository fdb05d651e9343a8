"""A sound server of the performance's own, whose output plays into nothing in real time."""
import signal
import socket
import subprocess

from eyes import wait_until


class SoundServer:
    def __init__(self, folder):
        folder.mkdir()
        self.folder = folder
        self.socket = folder / "socket"
        self.environment = {"PULSE_SERVER": f"unix:{self.socket}", "PULSE_COOKIE": str(folder / "cookie"),
                            "PULSE_RUNTIME_PATH": str(folder), "PULSE_STATE_PATH": str(folder)}
        self.program = None

    def start(self):
        words = ["pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no", "--disable-shm=yes",
                 "--realtime=no", "--log-target=null", "--load=module-null-sink rate=48000 channels=2",
                 f"--load=module-native-protocol-unix socket={self.socket} auth-cookie={self.folder}/cookie"]
        self.program = subprocess.Popen(words, env={"HOME": str(self.folder), "PATH": "/usr/bin:/bin"})
        wait_until(self._takes_connections, "the sound server")

    def _takes_connections(self):
        with socket.socket(socket.AF_UNIX) as client:
            return client.connect_ex(str(self.socket)) == 0

    def kill(self):
        if self.program:
            self.program.kill()
            self.program.wait()
            self.program = None

    def freeze(self):
        """It keeps its connections and answers nothing from now on."""
        self.program.send_signal(signal.SIGSTOP)
