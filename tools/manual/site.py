def build(folder):
    folder.mkdir(parents=True); (folder/'index.html').write_text('x')
