"""A whois server: one line in, an answer out, and the connection is closed."""
from harness import Script, hold, read_line


class WhoisServer(Script):
    """Answers each query with `answer`, bytes or a function of the query's line. The queries are kept in `queries`.
    With `stalls` it says no more after the answer and keeps the connection open."""

    def __init__(self, answer, stalls=False):
        self.queries = []

        def serve(connection, _number):
            query = read_line(connection)
            self.queries.append(query)
            connection.sendall(answer(query) if callable(answer) else answer)
            if stalls:
                hold(self, connection)
        super().__init__(serve)
