def run(world):
    """An ordinary user hides and brings back by command"""
    file = world.make_file(f"{world.user.home}/Bücher & Möbel/Geschenke für Oma.txt", "Überraschung\n")
    folder = f"{world.user.home}/Bilder vom Fest"
    world.make_file(f"{folder}/tief drin/Bild.png", "not quite a picture\n")
    for item in (file, folder):
        before = world.state_of(item)
        hidden = world.hidden_path(item)
        told = world.ctl("hide", item)
        assert told == f"{hidden}\n" and world.is_hidden(item), told
        world.must_be_as(before, hidden)
        told = world.ctl("unhide", item)
        assert told == f"{item}\n" and world.is_visible(item), told
        world.must_be_as(before, item)
    world.ctl("remove", "--yes", file, folder)
