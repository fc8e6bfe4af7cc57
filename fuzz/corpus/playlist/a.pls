[playlist]
NumberOfEntries=2
File1=http://s.example/live
Title1=Orvel
Length1=-1
File2=http://[::1]:8000/;stream.nsv
Version=2
