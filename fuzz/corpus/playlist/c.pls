[playlist]
File1=http://s.example/é
