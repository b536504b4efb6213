# The rooms and who names whom, from every CMakeLists.txt; who includes whom, from every source. Reads those files, in
# that order, named from the project's root. Prints the graph as text (FORM=text) or as docs/rooms.md (FORM=page), and
# every wall that is broken on standard error; the exit status is then 1. tools/walls.sh calls it.

function fault(text) { print text > "/dev/stderr"; faults++ }

function folderOf(path) { sub(/\/[^\/]*$/, "", path); return path }

# vlm_values is the target of the room values; a library or a program that is no room goes by its own name.
function roomOf(target) { return sub(/^vlm_/, "", target) ? target : target "*" }

function shown(room) {
    sub(/\*$/, (room in shared) ? "" : " program", room)
    return room
}

function addRoom(room, folder) {
    rooms[++roomCount] = room
    folderOfRoom[room] = folder
    roomOfFolder[folder] = room
}

# One command of a CMakeLists.txt, as words: its name, then its arguments.
function declared(count, words, folder,    i, room, scope) {
    if (words[1] == "vlm_room") {
        addRoom(words[2], folder)
        room = words[2]
        for (i = 3; i <= count; i++)
            if (words[i] ~ /^(PUBLIC|PRIVATE|FOLDERS)$/) scope = words[i]
            else if (scope != "FOLDERS") links[room, words[i]] = scope
    } else if (words[1] == "add_library" && words[3] == "SHARED" || words[1] == "add_executable") {
        # It is the folder of its first source, or the current one when that is a list.
        room = roomOf(words[2])
        i = words[1] == "add_library" ? 4 : 3
        addRoom(room, words[i] ~ /\// ? folder "/" folderOf(words[i]) : folder)
        if (words[1] == "add_library") shared[room] = folder
    } else if (words[1] == "target_link_libraries") {
        room = roomOf(words[2])
        for (i = 3; i <= count; i++)
            if (words[i] ~ /^(PUBLIC|PRIVATE|INTERFACE)$/) scope = words[i]
            else linked[room, roomOf(words[i])] = scope
    }
}

function ownerOf(path,    folder) {
    for (folder = folderOf(path); !(folder in roomOfFolder); folder = folderOf(folder))
        if (folder !~ /\//) return ""
    return roomOfFolder[folder]
}

function included(path, name, quoted,    room, i, target, beside) {
    room = ownerOf(path)
    if (room == "") return
    if (name ~ /\.\.\//) {
        fault(path ": includes " name ": name a room, not a way to it")
        return
    }
    beside[1] = folderOf(path) "/" name
    beside[2] = ((room in shared) ? shared[room] : folderOfRoom[room]) "/" name
    for (i = 1; quoted && i <= 2; i++)
        if (beside[i] in files) {
            if (ownerOf(beside[i]) != room && !((room in shared) && i == 2))
                fault(path ": includes " name ", which room " ownerOf(beside[i]) " keeps for itself")
            return
        }
    if (!(name in offered)) {
        if (quoted) fault(path ": includes " name ", which no room offers")
        return
    }
    target = offered[name]
    if (target == room) return
    if (path ~ /\/include\//) inPublicHeader[room, target] = path
    if (!((room, target) in includes)) includes[room, target] = path
}

function layerOf(room,    folder) { folder = folderOfRoom[room]; sub(/\/.*/, "", folder); return folder }

function sorted(list, count,    i, j, value) {
    for (i = 2; i <= count; i++) {
        value = list[i]
        for (j = i - 1; j >= 1 && list[j] > value; j--) list[j + 1] = list[j]
        list[j + 1] = value
    }
}

# The rooms that a room stands on; a circle is told where it closes.
function below(room, way,    at, i, other, beyond) {
    if (done[room]) return
    at = index(way, " " room " ")
    if (at > 0) {
        way = substr(way, at) room
        gsub(/\*/, "", way)
        fault("circle:" way)
        return
    }
    for (i = 1; i <= roomCount; i++) {
        other = rooms[i]
        if (!((room, other) in links)) continue
        reaches[room, other] = 1
        below(other, way room " ")
        for (beyond in folderOfRoom)
            if ((other, beyond) in reaches) reaches[room, beyond] = through[room, beyond] = 1
    }
    done[room] = 1
}

function nodeOf(room) {
    sub(/\*$/, "_", room)
    return "n_" room
}

function namedBy(room,    i, text) {
    for (i = 1; i <= roomCount; i++)
        if ((room, rooms[i]) in links) text = text (text == "" ? "" : " ") shown(rooms[i])
    return text
}

FNR == 1 {
    folder = folderOf(FILENAME)
    command = ""
}

FILENAME ~ /CMakeLists\.txt$/ {
    line = $0
    sub(/#.*/, "", line)
    command = command " " line
    if (gsub(/\(/, "(", command) > 0 && gsub(/\(/, "(", command) == gsub(/\)/, ")", command)) {
        gsub(/[()]/, " ", command)
        declared(split(command, words, " "), words, folder)
        command = ""
    }
    next
}

FNR == 1 {
    files[FILENAME] = 1
    name = FILENAME
    if (sub(/^.*\/include\//, "", name)) offered[name] = FILENAME
}

/^[ \t]*#[ \t]*include[ \t]*["<]/ {
    name = $0
    sub(/^[^"<]*/, "", name)
    quote = substr(name, 1, 1)
    name = substr(name, 2)
    sub(/[">].*/, "", name)
    read[++readCount] = FILENAME SUBSEP name SUBSEP (quote == "\"")
}

END {
    for (pair in linked) {
        split(pair, ends, SUBSEP)
        if (ends[1] in folderOfRoom && ends[2] in folderOfRoom) links[pair] = linked[pair]
    }
    sorted(rooms, roomCount)
    for (name in offered) offered[name] = ownerOf(offered[name])
    for (i = 1; i <= readCount; i++) {
        split(read[i], parts, SUBSEP)
        included(parts[1], parts[2], parts[3])
    }

    # A library that is the outside of a room offers what the room does.
    for (room in shared) {
        outsideOf[room] = roomOfFolder[shared[room]]
        for (i = 1; i <= roomCount; i++)
            if ((outsideOf[room], rooms[i]) in inPublicHeader)
                includes[room, rooms[i]] = inPublicHeader[room, rooms[i]] = inPublicHeader[outsideOf[room], rooms[i]]
    }

    height["libs"] = 1; height["src"] = 2; height["host"] = height["tools"] = 3
    for (i = 1; i <= roomCount; i++) {
        room = rooms[i]
        for (j = 1; j <= roomCount; j++) {
            other = rooms[j]
            pair = room SUBSEP other
            if (pair in links) {
                if (height[layerOf(other)] > height[layerOf(room)])
                    fault("upward: " room " in " folderOfRoom[room] " names " other " in " folderOfRoom[other])
                if (!(pair in includes) && !(other in shared))
                    fault("for nothing: " room " names " other ", and includes nothing of it")
                if ((pair in inPublicHeader) && links[pair] == "PRIVATE")
                    fault(inPublicHeader[pair] ": includes " other ", which " room " names as PRIVATE")
                if (!(pair in inPublicHeader) && links[pair] == "PUBLIC" && !(other in shared))
                    fault("sight for nothing: " room " names " other " as PUBLIC, but no header that it offers does")
            } else if (pair in includes) {
                named = 0
                for (library in shared)
                    if (outsideOf[library] == other && ((room, library) in links)) named = 1
                if (!named)
                    fault(includes[pair] ": includes " other ", which " room " does not name")
            }
        }
        below(room, " ")
    }

    split("host tools src libs", layers, " ")
    if (FORM == "page") {
        print "# The rooms\n"
        print "Made by `make rooms` from what the rooms name and include; `make walls` fails when it is out of date.\n"
        print "An arrow goes from a room to one that it names. Arrows that follow from others are left out of the"
        print "picture; the tables have all of them. Arrows never lead upward, from `libs` to `src` or from there to"
        print "`host` and `tools`, and never back to where they began.\n"
        print "```mermaid\nflowchart TD"
        for (l = 1; l <= 4; l++) {
            print "  subgraph " layers[l]
            for (i = 1; i <= roomCount; i++)
                if (layerOf(rooms[i]) == layers[l]) print "    " nodeOf(rooms[i]) "[" shown(rooms[i]) "]"
            print "  end"
        }
        for (i = 1; i <= roomCount; i++)
            for (j = 1; j <= roomCount; j++)
                if ((rooms[i], rooms[j]) in links && !((rooms[i], rooms[j]) in through))
                    print "  " nodeOf(rooms[i]) " --> " nodeOf(rooms[j])
        print "```"
    }
    for (l = 1; l <= 4; l++) {
        if (FORM == "page") print "\n## " layers[l] "\n\n| room | folder | names |\n|---|---|---|"
        for (i = 1; i <= roomCount; i++) {
            if (layerOf(rooms[i]) != layers[l]) continue
            name = shown(rooms[i])
            if (FORM == "page") print "| " name " | `" folderOfRoom[rooms[i]] "` | " namedBy(rooms[i]) " |"
            else print layers[l] "/" name ": " namedBy(rooms[i])
        }
    }
    exit faults > 0
}
