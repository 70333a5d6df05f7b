// A source that carries precompiled headers.
